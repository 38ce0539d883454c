#include "preprocessor/outputfile.h"

#include <utility>

#include "preprocessor/linewriter.h"

tOutputFile::tOutputFile(tDiskMan& disk, tString temporaryName, tString finalName)
    : disk_(disk), temporaryName_(std::move(temporaryName)), finalName_(std::move(finalName)) {}

tOutputFile::~tOutputFile() {
  if (temporaryExists_) disk_.remove(temporaryName_.c_str());
}

bool tOutputFile::create() {
  bool exists = false;
  file_ = disk_.createNew(temporaryName_.c_str(), exists);
  if (!file_ && exists && disk_.removeLeftover(temporaryName_.c_str())) {
    file_ = disk_.createNew(temporaryName_.c_str(), exists);
  }
  temporaryExists_ = file_ != nullptr;
  return temporaryExists_;
}

bool tOutputFile::write(std::string_view text) {
  tLineWriter lines(*file_);
  return lines.write(text) && lines.finish() && file_->close();
}

bool tOutputFile::rename() {
  if (!disk_.rename(temporaryName_.c_str(), finalName_.c_str())) return false;
  temporaryExists_ = false;
  return true;
}
