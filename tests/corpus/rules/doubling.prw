#translate MORE <x> OF => MORE <x>+<x> OF
MORE a OF
