#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A byte string with shared storage and copy-on-write.
///
/// Copies share their storage until one of them is written to. A string can also refer to bytes
/// that it does not own: a borrowed string copies them when it is written to, a constant string
/// refuses to be written to, even when the write would change nothing (fatal error "Cannot update a
/// constant string"); assigning to it or clearing it makes it an ordinary string. An index outside
/// the string is the fatal error "string index out of bounds"; a string that would grow past
/// maxSize() is the fatal error "string too long".
///
/// The bytes may hold zeros. They are not followed by a zero byte unless c_str() has been asked
/// for. Strings that share storage belong to one thread.
class tString {
 public:
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

  tString() noexcept : data_(""), size_(0), kind_(kBorrowed) {}
  /// Copies a zero-terminated text; null gives an empty string.
  tString(const char* text);  // NOLINT(google-explicit-constructor): a text is a string
  tString(const char* text, std::size_t size);
  explicit tString(std::string_view text) : tString(text.data(), text.size()) {}
  /// `count` copies of `c`.
  tString(std::size_t count, char c);
  tString(const tString& other) noexcept
      : data_(other.data_), size_(other.size_), kind_(other.kind_) {
    if (kind_ >= kOwned) addReference();
  }
  tString(tString&& other) noexcept : data_(other.data_), size_(other.size_), kind_(other.kind_) {
    other.forget();
  }
  tString& operator=(const tString& other) noexcept;
  tString& operator=(tString&& other) noexcept;
  ~tString() {
    if (kind_ >= kOwned) release();
  }

  /// Refers to `text` without copying it; the bytes must outlive this string and all its copies.
  static tString borrow(std::string_view text) { return tString(text, kBorrowed); }
  /// As borrow, and writing to the string is a fatal error. Copies are constant too.
  static tString constant(std::string_view text) { return tString(text, kConstant); }
  /// A string made by printf's rules; no length limit but maxSize().
  static tString format(const char* pattern, ...) __attribute__((format(printf, 1, 2)));

  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const char* data() const noexcept { return data_; }
  std::string_view view() const noexcept { return {data_, size_}; }
  operator std::string_view() const noexcept {  // NOLINT(google-explicit-constructor): no loss
    return view();
  }
  /// Zero-terminated bytes, valid until the string changes. May copy the text once, so it counts as
  /// a write where threads are concerned: not for a string that several of them see. A constant
  /// string stays constant.
  const char* c_str() const;
  bool isConstant() const noexcept { return kind_ == kConstant || kind_ == kOwnedConstant; }
  /// True when both strings refer to the same bytes in memory.
  bool sharesWith(const tString& other) const noexcept { return data_ == other.data_; }

  /// The byte at `index`, from 0.
  char operator[](std::size_t index) const {
    if (index >= size_) outOfBounds();
    return data_[index];
  }
  void setAt(std::size_t index, char c);

  /// Makes the string empty; storage of its own is kept.
  void clear() noexcept;
  /// Writable storage of size() bytes, owned by this string alone.
  char* writable();
  /// Makes room for `capacity` bytes in storage of its own, so that appends up to that size do
  /// not allocate.
  void reserve(std::size_t capacity);
  /// The size up to which appends do not allocate; size() when the storage is shared or not owned.
  std::size_t capacity() const noexcept;
  /// Cuts the string or extends it with `fill`.
  void resize(std::size_t size, char fill = '\0');
  /// Extends the string by `count` bytes that are not initialised and returns the first of them.
  char* extend(std::size_t count);

  tString& append(std::string_view text) {
    // An empty text, which may have a null pointer, wraps around and takes the slow way.
    if (kind_ == kOwned && text.size() - 1 < room()) {
      appendInPlace(text);
    } else {
      appendSlow(text);
    }
    return *this;
  }
  tString& append(char c) { return append(std::string_view(&c, 1)); }
  tString& operator+=(std::string_view text) { return append(text); }
  tString& operator+=(char c) { return append(c); }

  /// Inserts before `position`, which may be size().
  void insert(std::size_t position, std::string_view text);
  /// Removes up to `count` bytes from `position` on; a position past the end is a fatal error.
  void erase(std::size_t position, std::size_t count = npos);
  void replace(std::size_t position, std::size_t count, std::string_view text);
  /// Replaces every occurrence, from left to right, and goes on after each inserted text. Returns
  /// how many there were. An empty `what` replaces nothing.
  std::size_t replaceAll(std::string_view what, std::string_view with);

  /// The part from `position` on; empty when `position` is past the end. It shares the storage when
  /// it starts at 0 or the bytes are not owned. A part of a constant string is an ordinary string.
  tString substr(std::size_t position, std::size_t count = npos) const;
  std::size_t find(std::string_view text, std::size_t from = 0) const;
  /// As find, without regard to the case of ASCII letters.
  std::size_t findNoCase(std::string_view text, std::size_t from = 0) const;

  /// Removes blanks, tabs and line ends on both sides.
  void trim();
  void trimRight();
  /// ASCII letters only.
  void toUpper();
  void toLower();

  /// The largest size any string of the process may have, in bytes (at first 1 GiB, at most
  /// 4 GiB - 2). It is checked when storage is made, so a string keeps what it already has.
  static void setMaxSize(std::size_t bytes) noexcept;
  static std::size_t maxSize() noexcept { return maxSize_.load(std::memory_order_relaxed); }

  friend bool operator==(const tString& a, const tString& b) noexcept {
    return a.view() == b.view();
  }
  friend bool operator==(const tString& a, std::string_view b) noexcept { return a.view() == b; }
  friend bool operator==(const tString& a, const char* b) noexcept {
    return b ? a.view() == b : a.empty();
  }

 private:
  /// The kinds from kOwned on have storage. kOwnedConstant is a constant string that had to be
  /// copied for its terminating zero.
  enum eKind : std::uint32_t { kBorrowed, kConstant, kOwned, kOwnedConstant };

  /// Stands in front of the bytes of an owned string. Behind the `capacity` bytes stands a zero.
  struct tStorage {
    std::uint32_t references;
    std::uint32_t capacity;
  };

  tString(std::string_view text, eKind kind)
      : data_(text.data() ? text.data() : ""),
        size_(static_cast<std::uint32_t>(text.size())),
        kind_(kind) {
    if (text.size() > maxSize()) tooLong();
  }

  static constexpr std::size_t blockSize(std::size_t capacity) {
    return sizeof(tStorage) + capacity + 1;
  }
  tStorage* storage() const noexcept {
    return reinterpret_cast<tStorage*>(const_cast<char*>(data_)) - 1;
  }
  void addReference() noexcept { ++storage()->references; }
  void release() noexcept;
  void forget() noexcept {
    data_ = "";
    size_ = 0;
    kind_ = kBorrowed;
  }
  /// Bytes that can be appended in place; 0 when the storage is shared.
  std::size_t room() const noexcept {
    return storage()->references == 1 ? storage()->capacity - size_ : 0;
  }
  void appendInPlace(std::string_view text) noexcept {
    __builtin_memcpy(const_cast<char*>(data_) + size_, text.data(), text.size());
    size_ += static_cast<std::uint32_t>(text.size());
  }
  void appendSlow(std::string_view text);
  static tStorage* allocate(std::size_t capacity);
  bool unshared() const noexcept { return kind_ == kOwned && storage()->references == 1; }
  void requireWritable() const;
  /// Makes the storage writable and large enough for `capacity` bytes, exactly so when it is new.
  void makeOwned(std::size_t capacity);
  /// As makeOwned for a string that grows to `size` bytes, with room for more.
  void grow(std::size_t size);
  void setSize(std::size_t size) noexcept { size_ = static_cast<std::uint32_t>(size); }
  [[noreturn]] static void outOfBounds();
  [[noreturn]] static void tooLong();

  static std::atomic<std::size_t> maxSize_;

  mutable const char* data_;
  std::uint32_t size_;
  mutable std::uint32_t kind_;
};
