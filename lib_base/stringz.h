#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A byte string with shared storage and copy-on-write.
///
/// Copies share their storage until one of them is modified. A string can also refer to bytes that
/// it does not own: a borrowed string copies them before it is modified; modifying a constant
/// string is the fatal error "Cannot update a constant string", even if nothing would change.
/// Assigning to or clearing a constant string makes it an ordinary one. An index outside the string
/// is the fatal error "string index out of bounds"; growing past maxSize() is the fatal error
/// "string too long".
///
/// The bytes may include zeros. They are not zero-terminated until c_str() is called. Strings that
/// share storage must stay in one thread.
class tString {
 public:
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

  tString() noexcept : data_(""), size_(0), kind_(kBorrowed) {}
  /// Copies a zero-terminated string; null gives an empty string.
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

  /// Refers to `text` without copying; the bytes must outlive this string and all its copies.
  static tString borrow(std::string_view text) { return tString(text, kBorrowed); }
  /// Like borrow, but modifying the string is a fatal error. Copies are constant too.
  static tString constant(std::string_view text) { return tString(text, kConstant); }
  /// printf-style formatting; the only length limit is maxSize().
  static tString format(const char* pattern, ...) __attribute__((format(printf, 1, 2)));

  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const char* data() const noexcept { return data_; }
  std::string_view view() const noexcept { return {data_, size_}; }
  operator std::string_view() const noexcept {  // NOLINT(google-explicit-constructor): no loss
    return view();
  }
  /// Zero-terminated bytes, valid until the string changes. May copy the text once, so it counts as
  /// a write: not for strings shared between threads. A constant string stays constant.
  const char* c_str() const;
  bool isConstant() const noexcept { return kind_ == kConstant || kind_ == kOwnedConstant; }
  /// Whether both strings refer to the same bytes in memory.
  bool sharesWith(const tString& other) const noexcept { return data_ == other.data_; }

  /// The byte at the zero-based `index`.
  char operator[](std::size_t index) const {
    if (index >= size_) outOfBounds();
    return data_[index];
  }
  void setAt(std::size_t index, char c);

  /// Empties the string; storage that it owns is kept.
  void clear() noexcept;
  /// Writable, unshared storage of size() bytes.
  char* writable();
  /// Reserves unshared storage for `capacity` bytes, so that appending up to that size does not
  /// allocate.
  void reserve(std::size_t capacity);
  /// The size up to which appending does not allocate; size() if the storage is shared or not
  /// owned.
  std::size_t capacity() const noexcept;
  /// Truncates the string or extends it with `fill`.
  void resize(std::size_t size, char fill = '\0');
  /// Extends the string by `count` uninitialised bytes and returns a pointer to the first of them.
  char* extend(std::size_t count);

  [[gnu::always_inline]] tString& append(std::string_view text) {
    // For an empty text, whose pointer may be null, size() - 1 wraps around: the slow path.
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
  /// Removes up to `count` bytes at `position`; a position past the end is a fatal error.
  void erase(std::size_t position, std::size_t count = npos);
  void replace(std::size_t position, std::size_t count, std::string_view text);
  /// Replaces every occurrence, left to right, without rescanning the inserted text. Returns the
  /// number of replacements. An empty `what` replaces nothing.
  std::size_t replaceAll(std::string_view what, std::string_view with);

  /// The substring at `position`; empty if `position` is past the end. It shares the storage if it
  /// starts at 0 or the bytes are not owned. A substring of a constant string is an ordinary
  /// string.
  tString substr(std::size_t position, std::size_t count = npos) const;
  std::size_t find(std::string_view text, std::size_t from = 0) const;
  /// Like find, ignoring the case of ASCII letters.
  std::size_t findNoCase(std::string_view text, std::size_t from = 0) const;

  /// Removes leading and trailing blanks, tabs and line ends.
  void trim();
  void trimRight();
  /// ASCII letters only.
  void toUpper();
  void toLower();

  /// The maximum size of any string in the process, in bytes (initially 1 GiB, at most 4 GiB - 2).
  /// It is checked when storage is allocated, so existing strings are not affected.
  static void setMaxSize(std::size_t bytes) noexcept;
  static std::size_t maxSize() noexcept { return maxSize_.load(std::memory_order_relaxed); }

  friend bool operator==(const tString& a, const tString& b) noexcept {
    return a.view() == b.view();
  }
  // Inlined, a comparison with a literal is mostly one of sizes.
  [[gnu::always_inline]] friend bool operator==(const tString& a, std::string_view b) noexcept {
    return a.size_ == b.size() && __builtin_memcmp(a.data_, b.data(), b.size()) == 0;
  }
  [[gnu::always_inline]] friend bool operator==(const tString& a, const char* b) noexcept {
    return b ? a == std::string_view(b) : a.empty();
  }

 private:
  /// The kinds from kOwned on have storage. kOwnedConstant is a constant string that was copied to
  /// get a terminating zero.
  enum eKind : std::uint32_t { kBorrowed, kConstant, kOwned, kOwnedConstant };

  /// Precedes the bytes of an owned string. A zero follows the `capacity` bytes.
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
  /// The number of bytes that can be appended in place; 0 if the storage is shared.
  std::size_t room() const noexcept {
    return storage()->references == 1 ? storage()->capacity - size_ : 0;
  }
  [[gnu::always_inline]] void appendInPlace(std::string_view text) noexcept {
    __builtin_memcpy(const_cast<char*>(data_) + size_, text.data(), text.size());
    size_ += static_cast<std::uint32_t>(text.size());
  }
  void appendSlow(std::string_view text);
  static tStorage* allocate(std::size_t capacity);
  bool unshared() const noexcept { return kind_ == kOwned && storage()->references == 1; }
  void requireWritable() const;
  /// Makes the storage writable and large enough for `capacity` bytes; new storage has exactly
  /// that.
  void makeOwned(std::size_t capacity);
  /// Like makeOwned for a string that grows to `size` bytes, with room to spare.
  void grow(std::size_t size);
  void setSize(std::size_t size) noexcept { size_ = static_cast<std::uint32_t>(size); }
  [[noreturn]] static void outOfBounds();
  [[noreturn]] static void tooLong();

  static std::atomic<std::size_t> maxSize_;

  mutable const char* data_;
  std::uint32_t size_;
  mutable std::uint32_t kind_;
};
