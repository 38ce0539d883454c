#ifndef ORDERS_CH
#define ORDERS_CH

#include "company.ch"
#include "messages.ch"

* States of an order
#define ORDER_OPEN     "O"
#define ORDER_BLOCKED  "B"
#define ORDER_SHIPPED  "S"
#define ORDER_CLOSED   "C"

* A line of an order is an array
#define LINE_CODE      1
#define LINE_QTY       2
#define LINE_PRICE     3
#define LINE_SIZE      3
#define LINE_EMPTY     {Space(CODE_SIZE), 0, 0.00}

#define CODE_SIZE      8
#define MAX_LINES      50
#define DISCOUNT_FROM  1000.00
#define DISCOUNT_RATE  5              // in percent

#endif
