#ifndef A

#endif A
