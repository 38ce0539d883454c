#command RING <n> TIMES => Bell(<n>)
#translate DOZEN(<n>) => (12 * <n>)
RING DOZEN(2) + 1 TIMES
nEggs := DOZEN(nBoxes) + dozen(1)
RING 3 TIMES LOUDLY
