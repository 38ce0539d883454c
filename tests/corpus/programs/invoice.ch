/*
 * Constants of the invoice program.
 */
#ifndef INVOICE_CH
#define INVOICE_CH

#define TAX_RATE    0.19
#define CURRENCY    "EUR"

#ifdef TEST_RUN
  #define LOG_FILE  "test.log"
#else
  #define LOG_FILE  "invoice.log"
#endif

#define TITLE       "Invoice (" + CURRENCY + ")"

#endif
