#command BOOK <account1> : <amount1> [, <accountN> : <amountN>] => ;
   Book(<account1>, <amount1>) [; Book(<accountN>, <amountN>)]
BOOK cCash : 100
BOOK cCash : 100, cBank : f(20, 30), cOwner : -50
