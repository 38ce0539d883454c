/*
   company.ch: what every program of the company knows.
*/
#ifndef COMPANY_CH
#define COMPANY_CH

#define COMPANY_NAME   "Mercado & Filhos"
#define COMPANY_CITY   "São Paulo"          // passes through byte by byte

// Another currency can be chosen on the command line: -D HOME_CURRENCY=...
#define CUR_REAL       "R$"
#ifndef HOME_CURRENCY
#define HOME_CURRENCY  CUR_REAL
#endif

#define TAX_RATE       0.175
#define TERM_DAYS      28
#define GRACE_DAYS     3
#define LAST_DAY       (TERM_DAYS + GRACE_DAYS)

#define LOG_FILE       "orders.log"
#define YES            .T.
#define NO             .F.

#endif
