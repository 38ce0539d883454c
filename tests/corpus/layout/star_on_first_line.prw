* a heading
Function Star()
Return 2 *;
 3
