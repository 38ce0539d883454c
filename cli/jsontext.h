#pragma once

#include <nlohmann/json.hpp>
#include <string>

/// A JSON object, written value by value: an object of the JSON library takes memory to be
/// destroyed, and where there is none the program would end amid the output of another source.
class tJsonObject {
 public:
  tJsonObject& add(const char* key, const nlohmann::ordered_json& value) {
    using tJson = nlohmann::ordered_json;
    return addText(key, value.dump(-1, ' ', false, tJson::error_handler_t::replace));
  }
  /// Adds what is JSON already.
  tJsonObject& addText(const char* key, const std::string& value) {
    text_.append(text_.size() > 1 ? "," : "").append("\"").append(key).append("\":").append(value);
    return *this;
  }
  std::string text() const { return text_ + '}'; }

 private:
  std::string text_ = "{";
};

/// A JSON array.
class tJsonArray {
 public:
  tJsonArray& add(const std::string& element) {
    text_.append(text_.size() > 1 ? "," : "").append(element);
    return *this;
  }
  bool empty() const { return text_.size() == 1; }
  std::string text() const { return text_ + ']'; }

 private:
  std::string text_ = "[";
};
