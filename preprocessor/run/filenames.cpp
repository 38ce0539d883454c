#include "preprocessor/run/filenames.h"

#include "lib_base/misc.h"
#include "lib_base/pathname.h"
#include "preprocessor/convert/sourcekind.h"

namespace {

constexpr const char* kTemporaryOutput = ".ppo";
constexpr const char* kTemporaryRule = ".d";

tString outputDirectory(const tRunOptions& options, const tPathParts& source) {
  tString directory = options.outputDirectory;
  if (directory.empty()) directory = tString(source.drive).append(source.directory);
  if (!directory.empty() && !directory.view().ends_with('/')) directory += '/';
  return directory;
}

tString temporaryName(const tString& directory, const tRunOptions& options, const char* extension) {
  return tString::format("%skrpre%s%s", directory.c_str(), options.tag.c_str(), extension);
}

}  // namespace

tFileNames composeNames(const tRunOptions& options, const tString& source,
                        const tString& chosenOutput) {
  tPathParts parts;
  SplitPath(source, parts);
  const tSourceKind& kind = sourceKind(parts.extension);
  const tString directory = outputDirectory(options, parts);
  const tString named = tString::format("%s%s", directory.c_str(), parts.base.c_str());
  tFileNames names;
  names.source = source;
  names.directory = directory;
  // The session takes the name of the copy as an option and cleans it like one.
  names.copy = normaliseFileName(temporaryName(directory, options, kind.temporary));
  names.temporaryOutput = temporaryName({}, options, kTemporaryOutput);
  names.temporaryRule = temporaryName({}, options, kTemporaryRule);
  names.output = tString(named).append(kind.output);
  names.temporaryErrors = temporaryName(directory, options, kind.error);
  names.errors = tString(named).append(kind.error);
  names.outputIsNamed = !chosenOutput.empty();
  if (names.outputIsNamed) names.output = chosenOutput;
  const std::size_t extension = extensionOf(names.output).size();
  names.savedCopy = tString(names.output.view().substr(0, names.output.size() - extension));
  names.savedCopy += kind.temporary;
  // What is removed after a failure must be found without memory for a name: a copy that fills its
  // storage ends with a zero.
  for (tString* name : {&names.output, &names.temporaryErrors}) *name = tString(name->view());
  return names;
}

bool leadsToSource(tDiskMan& disk, const tString& name, bool followed) {
  const auto isSource = [](const tString& file) { return isSourceExtension(extensionOf(file)); };
  return isSource(name) || (followed && isSource(disk.follow(name.c_str())));
}

bool outputIsSource(tDiskMan& disk, const tFileNames& names, const tString& readName,
                    bool followed) {
  if (names.outputIsNamed && leadsToSource(disk, names.output, followed)) return true;
  if (!followed && disk.follow(names.output.c_str()) != names.output) return false;
  if (!names.outputIsNamed && !equalNoCase(bareName(names.source), bareName(names.output))) {
    return false;
  }
  const tString source = disk.resolve(readName.c_str());
  return !source.empty() && source == disk.resolve(names.output.c_str());
}
