// Stands in for the external converter. It writes its arguments into the file that it is asked for,
// as a source that assigns each of them, and obeys what stands in the source.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string valueOf(int count, char** arguments, const std::string& option) {
  for (int i = 1; i < count; ++i) {
    if (std::string(arguments[i]).rfind(option, 0) == 0) return arguments[i] + option.size();
  }
  return {};
}

}  // namespace

int main(int count, char** arguments) {
  std::ifstream source(valueOf(count, arguments, "@F"));
  const std::string text{std::istreambuf_iterator<char>(source), {}};
  if (text.rfind("exit ", 0) == 0) return std::atoi(text.c_str() + 5);
  if (text.rfind("abort", 0) == 0) std::raise(SIGKILL);
  std::puts("converting");
  if (text.rfind("nothing", 0) == 0) return 0;
  std::ofstream converted(valueOf(count, arguments, "@Q"));
  converted << text;
  for (int i = 1; i < count; ++i) {
    converted << "Argument";
    for (const char* c = arguments[i]; *c != '\0'; ++c) {
      converted << ' ' << static_cast<int>(static_cast<unsigned char>(*c));
    }
    converted << '\n';
  }
}
