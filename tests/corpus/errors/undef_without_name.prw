#undef
