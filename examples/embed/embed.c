/* A host of the preprocessor: preprocesses the sources that it is given, one run for each, and says
 * what became of them. The messages of the library are shown in its own way. */
#include <krpre.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Messages come in pieces that need not be lines. */
struct messages {
  int atLineStart;
};

static void showMessage(void* context, const char* text, size_t length) {
  struct messages* messages = (struct messages*)context;
  for (size_t i = 0; i < length; ++i) {
    if (messages->atLineStart) fputs("  | ", stdout);
    putchar(text[i]);
    messages->atLineStart = text[i] == '\n';
  }
}

/* Returns a new string, of `size` bytes. */
static char* newText(size_t size) {
  char* text = (char*)malloc(size);
  if (text == NULL) abort();
  return text;
}

/* Returns the directory of the headers that come with the library, as a new string. */
static char* shippedHeaders(void) {
  const size_t size = krpre_headers_directory(NULL, 0) + 1;
  char* directory = newText(size);
  krpre_headers_directory(directory, size);
  return directory;
}

static const char* meaning(int result) {
  switch (result) {
    case KRPRE_OK:
      return "preprocessed";
    case KRPRE_ERROR:
      return "has an error";
    case KRPRE_BAD_SOURCE:
      return "cannot be read";
    case KRPRE_OUTPUT_FAILED:
      return "has no output, which could not be written";
    default:
      return "could not be converted";
  }
}

static int preprocess(const char* headers, const char* name) {
  struct messages messages = {1};
  struct krpre_host host;
  memset(&host, 0, sizeof host);
  host.size = sizeof host;
  host.context = &messages;
  host.message = showMessage;
  host.includeDirectoryCount = 1;
  host.includeDirectories = &headers;

  const size_t size = strlen(name) + sizeof "@F";
  char* source = newText(size);
  snprintf(source, size, "@F%s", name);
  char* arguments[] = {NULL, source};
  const int result = krpre_run(2, arguments, &host);
  free(source);
  printf("%s %s\n", name, meaning(result));
  return result;
}

int main(int count, char** names) {
  char* headers = shippedHeaders();
  int failed = 0;
  for (int i = 1; i < count; ++i) failed |= preprocess(headers, names[i]) != KRPRE_OK;
  free(headers);
  return failed;
}
