__SynchronizeDebug__( 3
__IGNOREDEBUGLINE__() @ ]
Function A()
