// The program krpre in a folder of the disk: its main function with any arguments, over sources and
// headers of any content. It ends with one of its results, changes no source, leaves no temporary
// file and no open descriptor, and what it prints as JSON is JSON.
//
// The first byte of the input tells whether the grammars make the arguments and the sources.
// Otherwise arguments stand a line each, up to an empty line, and the sources follow as in
// program.h; the last header is what standard input gives.

#include <dirent.h>
#include <fcntl.h>
#include <getopt.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/check.h"
#include "fuzz/program.h"
#include "lib_base/misc.h"
#include "lib_gzip/zipsource.h"

// The program's own.
int krpre_main(int count, char** arguments);

// Where a sanitizer reports while standard error is kept away.
extern "C" __attribute__((weak)) void __sanitizer_set_report_fd(void* descriptor);

namespace {

namespace fs = std::filesystem;

enum eMode : unsigned { kMadeArguments = 1, kMadeSources = 2 };

/// Keeps a standard file away and collects what is written to it.
class tTaken {
 public:
  explicit tTaken(int descriptor)
      : descriptor_(descriptor), saved_(dup(descriptor)), file_(memfd_create("taken", 0)) {
    dup2(file_, descriptor_);
  }
  ~tTaken() {
    dup2(saved_, descriptor_);
    close(saved_);
    close(file_);
  }
  std::string text() const {
    std::string all(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
    require(pread(file_, all.data(), all.size(), 0) == static_cast<ssize_t>(all.size()), "read");
    return all;
  }
  void fill(std::string_view text) const {
    require(write(file_, text.data(), text.size()) == static_cast<ssize_t>(text.size()), "write");
    lseek(file_, 0, SEEK_SET);
  }

 private:
  int descriptor_;
  int saved_;
  int file_;
};

/// A folder that is the current one while this lives; its files are those of `texts`.
class tFolder {
 public:
  explicit tFolder(const tProgramTexts& texts) : before_(open(".", O_RDONLY | O_DIRECTORY)) {
    static const std::string kPath = [] {
      std::string path =
          (fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path().string()) +
          std::string("/krpre-fuzz-XXXXXX");
      require(mkdtemp(path.data()) != nullptr, "there is a folder");
      setenv("XDG_CACHE_HOME", path.c_str(), 1);
      return path;
    }();
    require(chdir(kPath.c_str()) == 0, "it can be entered");
    for (const auto& entry : fs::directory_iterator(".")) fs::remove_all(entry.path());
    fs::create_directory("out");
    fs::create_directory("dir");
    fs::create_symlink("b.prw", "link.prw");
    fs::create_symlink("loop", "loop");
    write("a.prw", texts.main);
    write("b.prw", "#include \"b.ch\"\nx := One\n");
    write("c.zorb", texts.headers[1]);
    write("page.krh", texts.main);
    write("packed.prw", packZipSource(texts.main));
    write("list", "a.prw;b.prw; \"page.krh\"");
    for (std::size_t i = 0; i < std::size(texts.headers); ++i) {
      write(std::string(tProgramTexts::kHeaders[i]), texts.headers[i]);
    }
  }
  ~tFolder() {
    require(fchdir(before_) == 0, "there is a way back");
    close(before_);
  }

  /// Everything but outputs; `maySources` tells whether those may have changed.
  void check(bool maySources) const {
    for (const auto& [name, text] : written_) {
      require(fs::exists(name), "no source is removed");
      require(maySources || read(name) == text, "sources stay as they are");
    }
    for (const char* folder : {".", "out"}) {
      for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        require(name.find('~') == std::string::npos && !name.ends_with("tmp"),
                "no temporary file stays");
      }
    }
  }

 private:
  static std::string read(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void write(const std::string& name, std::string_view text) {
    std::ofstream(name, std::ios::binary) << text;
    written_[name] = text;
  }

  int before_;
  std::map<std::string, std::string> written_;
};

int openFiles() {
  DIR* const folder = opendir("/proc/self/fd");
  int count = 0;
  while (readdir(folder) != nullptr) ++count;
  closedir(folder);
  return count;
}

std::vector<std::string> argumentsOf(std::string_view lines) {
  std::vector<std::string> arguments = {"krpre"};
  for (; !lines.empty(); lines.remove_prefix(std::min(arguments.back().size() + 1, lines.size()))) {
    arguments.emplace_back(lines.substr(0, lines.find('\n')));
    arguments.back() = arguments.back().substr(0, arguments.back().find('\0'));
    if (arguments.size() > 40) break;
  }
  return arguments;
}

/// What would lead out of the folder; files there must not be touched.
bool leadsAway(std::string_view lines) {
  for (std::size_t at = lines.find('/'); at != std::string_view::npos;
       at = lines.find('/', at + 1)) {
    const std::string_view before = lines.substr(0, at);
    const bool option = at + 1 < lines.size() && (before.empty() || before.back() == '\n') &&
                        std::string_view("DKIN").find(lines[at + 1]) != std::string_view::npos;
    if (!option && !before.ends_with("out") &&
        !(before.ends_with(".") && !before.ends_with(".."))) {
      return true;
    }
  }
  return false;
}

void checkJsonLines(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    require(nlohmann::json::accept(line), "each line is JSON");
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

bool has(const std::vector<std::string>& arguments, std::string_view wanted) {
  return std::find(arguments.begin(), arguments.end(), wanted) != arguments.end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const int kReports = [] {
    const int descriptor = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 100);
    if (__sanitizer_set_report_fd != nullptr) {
      // NOLINTNEXTLINE(performance-no-int-to-ptr): the sanitizer takes a number so
      __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor)));
    }
    return descriptor;
  }();
  require(kReports >= 0, "there is a standard error");
  tByteReader input(bytes, size);
  const unsigned mode = input.byte();
  std::string lines;
  if ((mode & kMadeArguments) != 0) {
    lines = kCommandGrammar.make('C', input);
  } else {
    const std::string_view rest = input.rest();
    lines = rest.substr(0, rest.find("\n\n"));
    input = tByteReader(rest.substr(std::min(lines.size() + 2, rest.size())));
  }
  if (leadsAway(lines)) return 0;
  const tProgramTexts texts(input, (mode & kMadeSources) != 0);
  std::vector<std::string> arguments = argumentsOf(lines);
  std::vector<char*> vector;
  vector.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) vector.push_back(argument.data());
  vector.push_back(nullptr);

  const tFolder folder(texts);
  const int before = openFiles();
  int result = 0;
  std::string printed;
  {
    const tTaken in(STDIN_FILENO), out(STDOUT_FILENO), errors(STDERR_FILENO);
    in.fill(texts.headers[2]);
    optind = 0;  // a new vector
    result = krpre_main(static_cast<int>(vector.size()) - 1, vector.data());
    std::fflush(stdout);
    printed = out.text();
  }
  require(openFiles() == before, "no descriptor stays open");
  const bool classic = arguments.size() > 1 && arguments[1] == "--classic";
  require(result >= 0 && result <= (classic ? 1 : 2), "a result of the program");
  const bool packs = has(arguments, "pack") || has(arguments, "unpack");
  folder.check(packs);
  if (classic || result != 0) return 0;
  const bool asks = has(arguments, "explain") || has(arguments, "rules");
  if (asks && has(arguments, "--json") && printed.find_first_of("[{") == 0) {
    require(nlohmann::json::accept(printed), "what is printed is JSON");
  }
  if (has(arguments, "--diagnostics=json") && !has(arguments, "-") && printed.starts_with('{')) {
    checkJsonLines(printed);
  }
  return 0;
}
