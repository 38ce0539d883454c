#define NOW() Time()
