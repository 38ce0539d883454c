// opens what nobody closes
While x
If y
