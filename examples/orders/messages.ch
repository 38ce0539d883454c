#ifndef MESSAGES_CH
#define MESSAGES_CH

#include "company.ch"

#define MSG_NO_CUSTOMER  "Customer not found"
#define MSG_NO_CREDIT    'Credit limit of "' + CUSTOMER->NAME + '" exceeded'
#define MSG_NO_STOCK     "Not enough in stock"
#define MSG_SAVED        COMPANY_NAME + ": order saved, number "
#define MSG_WORDS        {MSG_NO_STOCK, "It's closed", ""}

#endif
