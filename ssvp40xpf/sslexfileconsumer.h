#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "ssvp40xpf/sslexconsumer.h"

/// A file, read in pieces of the buffer's size.
class SSLexFileConsumer : public SSLexConsumer {
 public:
  static constexpr std::size_t kBufferSize = 16384;
  static constexpr std::size_t kIncrement = 4096;

  /// Raises SSErrorOpenFile when the file cannot be opened.
  explicit SSLexFileConsumer(const char* path, SSLexConsumerType type = charType,
                             std::size_t size = kBufferSize, std::size_t increment = kIncrement);
  /// An open file that the caller closes; `name` is used in messages only.
  SSLexFileConsumer(std::FILE* file, const char* name, SSLexConsumerType type = charType,
                    std::size_t size = kBufferSize, std::size_t increment = kIncrement);
  ~SSLexFileConsumer() override;

  /// Raises SSErrorReadFile when reading fails or half a 16-bit unit ends the file.
  std::size_t nextBuffer() override;

 protected:
  bool atEnd() override;
  std::FILE* file() const { return file_; }
  const char* path() const { return path_.c_str(); }

 private:
  std::string path_;
  std::FILE* file_ = nullptr;
  bool ownsFile_ = true;
};

/// A file whose kind shows in its first two bytes: with a byte-order mark it is read as 16-bit
/// units, otherwise as the given type. The buffer is never larger than the file.
class SSLexAutoFileConsumer : public SSLexFileConsumer {
 public:
  explicit SSLexAutoFileConsumer(const char* path, SSLexConsumerType type = charType,
                                 std::size_t size = kBufferSize,
                                 std::size_t increment = kIncrement);

 private:
  struct tKind {
    SSLexConsumerType type;
    std::size_t size;
  };
  SSLexAutoFileConsumer(const char* path, tKind kind, std::size_t increment);
  static tKind detect(const char* path, SSLexConsumerType type, std::size_t size);
};
