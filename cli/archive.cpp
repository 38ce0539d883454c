#include "cli/archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <dlfcn.h>
#include <sys/stat.h>

#include <ctime>
#include <memory>
#include <string_view>

namespace {

constexpr std::size_t kMostMembers = 100'000;
constexpr std::size_t kLongestMember = (std::size_t{16} << 20) - 1;
constexpr std::size_t kMostText = std::size_t{256} << 20;

#define LIBARCHIVE_FUNCTIONS(X)            \
  X(archive_entry_filetype)                \
  X(archive_entry_free)                    \
  X(archive_entry_new)                     \
  X(archive_entry_pathname)                \
  X(archive_entry_pathname_utf8)           \
  X(archive_entry_set_filetype)            \
  X(archive_entry_set_mtime)               \
  X(archive_entry_set_pathname)            \
  X(archive_entry_set_perm)                \
  X(archive_entry_set_size)                \
  X(archive_error_string)                  \
  X(archive_read_data)                     \
  X(archive_read_free)                     \
  X(archive_read_new)                      \
  X(archive_read_next_header)              \
  X(archive_read_open_filename)            \
  X(archive_read_support_filter_all)       \
  X(archive_read_support_format_tar)       \
  X(archive_read_support_format_zip)       \
  X(archive_write_close)                   \
  X(archive_write_data)                    \
  X(archive_write_free)                    \
  X(archive_write_header)                  \
  X(archive_write_new)                     \
  X(archive_write_open)                    \
  X(archive_write_set_bytes_in_last_block) \
  X(archive_write_set_format_zip)

// The library brings a dozen others, for which each run would wait, and few runs need it.
struct tLibArchive {
#define FIELD(name) decltype(&::name) name;
  LIBARCHIVE_FUNCTIONS(FIELD)
#undef FIELD
};

template <class tFunction>
bool load(void* handle, const char* name, tFunction& function) {
  function = reinterpret_cast<tFunction>(dlsym(handle, name));
  return function != nullptr;
}

// Null when it is not there.
const tLibArchive* loadLibrary() {
  static tLibArchive functions;
  void* const handle = dlopen("libarchive.so.13", RTLD_NOW | RTLD_LOCAL);
  bool loaded = handle != nullptr;
#define LOAD(name) loaded = loaded && load(handle, #name, functions.name);
  LIBARCHIVE_FUNCTIONS(LOAD)
#undef LOAD
  return loaded ? &functions : nullptr;
}

const tLibArchive* knownLibrary() {
  static const tLibArchive* const known = loadLibrary();
  return known;
}

// Valid when knownLibrary() is not null.
const tLibArchive& library() {
  return *knownLibrary();
}

constexpr const char* kNoLibrary =
    "archives need the library libarchive.so.13, which is not there: install libarchive13";

struct tEndReading {
  void operator()(archive* reader) const { library().archive_read_free(reader); }
};
struct tEndWriting {
  void operator()(archive* writer) const { library().archive_write_free(writer); }
};
struct tFreeEntry {
  void operator()(archive_entry* entry) const { library().archive_entry_free(entry); }
};

std::string reasonOf(archive* reader) {
  const char* const text = library().archive_error_string(reader);
  return text == nullptr ? "it cannot be read" : text;
}

std::string nameOf(archive_entry* entry) {
  const char* name = library().archive_entry_pathname_utf8(entry);
  if (name == nullptr) name = library().archive_entry_pathname(entry);
  return name == nullptr ? "" : name;
}

bool leadsOutside(const std::string& name) {
  if (name.empty() || name[0] == '/') return true;
  return ("/" + name + "/").find("/../") != std::string::npos;
}

// Returns what is wrong, or an empty text.
std::string readText(archive* reader, const std::string& name, std::size_t room,
                     std::string& text) {
  char buffer[64 * 1024];
  for (;;) {
    const la_ssize_t count = library().archive_read_data(reader, buffer, sizeof buffer);
    if (count < 0) return name + ": " + reasonOf(reader);
    if (count == 0) return {};
    text.append(buffer, static_cast<std::size_t>(count));
    if (text.size() > kLongestMember) return name + ": 16 MiB or more";
    if (text.size() > room) return "its files are too large";
  }
}

la_ssize_t append(archive* /*writer*/, void* context, const void* bytes, std::size_t count) {
  static_cast<std::string*>(context)->append(static_cast<const char*>(bytes), count);
  return static_cast<la_ssize_t>(count);
}

}  // namespace

bool mayBeArchive(const std::string& name) {
  struct stat there {};
  return stat(name.c_str(), &there) == 0 && S_ISREG(there.st_mode);
}

std::string readArchive(const std::string& name, std::vector<tMember>& members) {
  constexpr std::size_t kBlock = 64 * 1024;
  if (knownLibrary() == nullptr) return kNoLibrary;
  const std::unique_ptr<archive, tEndReading> reader(library().archive_read_new());
  library().archive_read_support_format_zip(reader.get());
  library().archive_read_support_format_tar(reader.get());
  library().archive_read_support_filter_all(reader.get());
  if (library().archive_read_open_filename(reader.get(), name.c_str(), kBlock) != ARCHIVE_OK) {
    return reasonOf(reader.get());
  }
  std::size_t room = kMostText;
  for (;;) {
    archive_entry* entry = nullptr;
    const int result = library().archive_read_next_header(reader.get(), &entry);
    if (result == ARCHIVE_EOF) return {};
    if (result < ARCHIVE_WARN) return reasonOf(reader.get());
    if (library().archive_entry_filetype(entry) != AE_IFREG) continue;
    tMember member{nameOf(entry), {}};
    if (leadsOutside(member.name)) return "'" + member.name + "' is no name within an archive";
    if (members.size() == kMostMembers) return "it has too many files";
    std::string trouble = readText(reader.get(), member.name, room, member.text);
    if (!trouble.empty()) return trouble;
    room -= member.text.size();
    members.push_back(std::move(member));
  }
}

std::string archiveOf(const std::vector<tMember>& members, std::string& trouble) {
  std::string bytes;
  trouble = knownLibrary() == nullptr ? kNoLibrary : "";
  if (!trouble.empty()) return bytes;
  const std::unique_ptr<archive, tEndWriting> writer(library().archive_write_new());
  library().archive_write_set_format_zip(writer.get());
  library().archive_write_set_bytes_in_last_block(writer.get(), 1);
  bool good =
      library().archive_write_open(writer.get(), &bytes, nullptr, append, nullptr) == ARCHIVE_OK;
  for (const tMember& member : members) {
    const std::unique_ptr<archive_entry, tFreeEntry> entry(library().archive_entry_new());
    constexpr std::time_t kAnyTime = 315532800;  // of 1980, the first that a zip knows
    library().archive_entry_set_pathname(entry.get(), member.name.c_str());
    library().archive_entry_set_filetype(entry.get(), AE_IFREG);
    library().archive_entry_set_perm(entry.get(), 0644);
    library().archive_entry_set_mtime(entry.get(), kAnyTime, 0);
    library().archive_entry_set_size(entry.get(), static_cast<la_int64_t>(member.text.size()));
    good = good && library().archive_write_header(writer.get(), entry.get()) == ARCHIVE_OK &&
           library().archive_write_data(writer.get(), member.text.data(), member.text.size()) ==
               static_cast<la_ssize_t>(member.text.size());
  }
  good = library().archive_write_close(writer.get()) == ARCHIVE_OK && good;
  if (!good) trouble = reasonOf(writer.get());
  return bytes;
}
