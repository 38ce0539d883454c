#include "tests/support/childprocess.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr unsigned kLongestRun = 60;  // seconds

class tMemoryFile {
 public:
  tMemoryFile() : descriptor_(memfd_create("child", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw std::runtime_error("memfd_create failed");
  }
  ~tMemoryFile() { close(descriptor_); }
  tMemoryFile(const tMemoryFile&) = delete;
  tMemoryFile& operator=(const tMemoryFile&) = delete;

  int descriptor() const { return descriptor_; }

  std::string bytes() const {
    lseek(descriptor_, 0, SEEK_SET);
    std::string text;
    char buffer[4096];
    for (ssize_t length = 0; (length = read(descriptor_, buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(length));
    }
    return text;
  }

 private:
  int descriptor_;
};

[[noreturn]] void becomeChild(char** command, const char* directory, const std::string& include,
                              int output, int errors) {
  if (chdir(directory) != 0) _exit(126);
  if (include.empty()) {
    unsetenv("INCLUDE");
  } else {
    setenv("INCLUDE", include.c_str(), 1);
  }
  setenv("LC_ALL", "C", 1);  // the language that the tests expect
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  alarm(kLongestRun);
  execv(command[0], command);
  _exit(127);
}

}  // namespace

tChildResult runChild(const std::vector<std::string>& command, const fs::path& directory,
                      const std::string& include) {
  std::vector<char*> slots;
  for (const std::string& argument : command) slots.push_back(const_cast<char*>(argument.c_str()));
  slots.push_back(nullptr);
  const tMemoryFile output;
  const tMemoryFile errors;

  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("fork failed");
  if (child == 0) {
    becomeChild(slots.data(), directory.c_str(), include, output.descriptor(), errors.descriptor());
  }
  int status = 0;
  waitpid(child, &status, 0);

  tChildResult result;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  result.output = output.bytes();
  result.errors = errors.bytes();
  return result;
}

tTemporaryDirectory::tTemporaryDirectory() {
  std::string name = fs::temp_directory_path() / "krpre-test-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
  path_ = name;
}

tTemporaryDirectory::~tTemporaryDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void tTemporaryDirectory::write(const std::string& name, const std::string& bytes) const {
  fs::create_directories((path_ / name).parent_path());
  writeBytes(path_ / name, bytes);
}

std::string readBytes(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + file.string());
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeBytes(const fs::path& file, const std::string& bytes) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}
