#include "cli/librarycall.h"

std::string nameInRun(const std::string& name) {
  // The library drops white space and quotes at the start of a name.
  const bool anchored = name.find_first_of(" \t\n\v\f\r\"") == 0;
  return anchored ? "./" + name : name;
}

std::string shippedHeaders() {
  return writtenText(krpre_headers_directory);
}

tLibraryCall::tLibraryCall(const tCommandLine& line, const std::string& source,
                           const std::string& shippedHeaders, const std::string& tag)
    : onlyFiles_(line.readsOnlyHostFiles()), time_(line.time ? &*line.time : nullptr) {
  arguments_.emplace_back("krpre");
  if (line.trace) arguments_.emplace_back("-T");
  if (!tag.empty()) arguments_.push_back("@I" + tag);
  // The library removes one pair of quotes, whatever stands between them.
  arguments_.push_back("@F\"" + nameInRun(source) + '"');
  for (std::string& argument : arguments_) slots_.push_back(argument.data());

  for (const std::string& name : line.includeDirectories) directories_.push_back(name.c_str());
  directories_.push_back(shippedHeaders.c_str());
  for (const tDefine& define : line.defines) {
    defines_.push_back({define.name.c_str(), define.value ? define.value->c_str() : nullptr});
  }
  for (const tPrefixMap& map : line.prefixes) {
    prefixes_.push_back({map.from.c_str(), map.to.c_str()});
  }
  for (const tHostFile& file : line.hostFiles()) {
    const char* const container = file.container.empty() ? nullptr : file.container.c_str();
    files_.push_back({file.name.c_str(), file.text.data(), file.text.size(), container});
  }
}

void tLibraryCall::prepare(krpre_host& host) const {
  host.includeDirectoryCount = directories_.size();
  host.includeDirectories = directories_.data();
  host.defineCount = defines_.size();
  host.defines = defines_.data();
  host.prefixCount = prefixes_.size();
  host.prefixes = prefixes_.data();
  host.timeStamp = time_;
  host.fileCount = files_.size();
  host.files = files_.data();
  if (onlyFiles_) host.flags |= KRPRE_ONLY_FILES;
}
