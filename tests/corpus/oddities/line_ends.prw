a

b
c
d