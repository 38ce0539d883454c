#include "ssvp40xpf/sslexfileconsumer.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

SSLexFileConsumer::SSLexFileConsumer(const char* path, SSLexConsumerType type, std::size_t size,
                                     std::size_t increment)
    : SSLexConsumer(type, size, increment),
      path_(path),
      file_(std::fopen(path, type == textType ? "r" : "rb")) {
  if (file_ == nullptr) raise(SSErrorOpenFile, path, errno);
}

SSLexFileConsumer::SSLexFileConsumer(std::FILE* file, const char* name, SSLexConsumerType type,
                                     std::size_t size, std::size_t increment)
    : SSLexConsumer(type, size, increment), path_(name), file_(file), ownsFile_(false) {}

SSLexFileConsumer::~SSLexFileConsumer() {
  if (ownsFile_ && file_ != nullptr) std::fclose(file_);
}

std::size_t SSLexFileConsumer::nextBuffer() {
  if (file_ == nullptr) return 0;
  const std::size_t count = std::fread(freeSpace(), 1, freeSize(), file_);
  if (count == 0 && std::ferror(file_) != 0) raise(SSErrorReadFile, path(), errno);
  return count;
}

bool SSLexFileConsumer::atEnd() {
  if (file_ == nullptr) return true;
  const int next = std::getc(file_);
  if (next != EOF) {
    std::ungetc(next, file_);
    return false;
  }
  const bool halfUnit = type() == wideType && (dataEnd() - SSLexConsumer::next()) % 2 != 0;
  if (std::ferror(file_) != 0 || halfUnit) raise(SSErrorReadFile, path(), errno);
  return true;
}

SSLexAutoFileConsumer::SSLexAutoFileConsumer(const char* path, SSLexConsumerType type,
                                             std::size_t size, std::size_t increment)
    : SSLexAutoFileConsumer(path, detect(path, type, size), increment) {}

SSLexAutoFileConsumer::SSLexAutoFileConsumer(const char* path, tKind kind, std::size_t increment)
    : SSLexFileConsumer(path, kind.type, kind.size, increment) {
  struct stat status;
  if (file() == nullptr) return;
  if (fstat(fileno(file()), &status) != 0 || !S_ISREG(status.st_mode)) {
    raise(SSErrorReadFile, path, errno);
  }
}

SSLexAutoFileConsumer::tKind SSLexAutoFileConsumer::detect(const char* path, SSLexConsumerType type,
                                                           std::size_t size) {
  struct stat status;
  if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return {type, size};
  const tKind asAsked{type, std::min(size, static_cast<std::size_t>(status.st_size))};
  std::FILE* const file = std::fopen(path, "rb");
  if (file == nullptr) return asAsked;
  unsigned char first[2];
  const bool hasTwo = std::fread(first, 1, 2, file) == 2;
  std::fclose(file);
  const unsigned unit = hasTwo ? first[0] | static_cast<unsigned>(first[1]) << 8 : 0;
  const bool wide = unit == kByteOrderMark || unit == kSwappedMark;
  return {wide ? wideType : type, asAsked.size};
}
