#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "ssvp40xpf/sslexconsumer.h"

/// A file, read in chunks of the buffer's size.
class SSLexFileConsumer : public SSLexConsumer {
 public:
  static constexpr std::size_t kBufferSize = 16384;
  static constexpr std::size_t kIncrement = 4096;

  /// Raises SSErrorOpenFile if the file cannot be opened.
  explicit SSLexFileConsumer(const char* path, SSLexConsumerType type = charType,
                             std::size_t size = kBufferSize, std::size_t increment = kIncrement);
  /// Reads an open file, which the caller closes; `name` is only used in messages.
  SSLexFileConsumer(std::FILE* file, const char* name, SSLexConsumerType type = charType,
                    std::size_t size = kBufferSize, std::size_t increment = kIncrement);
  ~SSLexFileConsumer() override;

  /// Raises SSErrorReadFile if reading fails or the file ends with half a 16-bit unit.
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

/// A file whose type is detected from its first two bytes: with a byte-order mark it is read as
/// 16-bit units, otherwise as the given type. The buffer is never larger than the file.
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
