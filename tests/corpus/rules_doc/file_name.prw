#command LOAD <(file)> => LoadFile(<(file)>)
LOAD prices.txt
LOAD prices
LOAD (cFolder + "prices.txt")
