#command TOTAL <values,...> INTO <sum> => <sum> := Total({<values>})
TOTAL nOne, f(2, 3), aRow[4] INTO nSum
