#pragma once

#include <string>
#include <string_view>

/// Colours texts for a terminal, or leaves them as they are.
class tPaint {
 public:
  enum eColour { kBold, kDim, kRed, kGreen, kYellow, kCyan };

  explicit tPaint(bool on) : on_(on) {}

  bool isOn() const { return on_; }
  std::string operator()(eColour colour, std::string_view text) const;

 private:
  bool on_;
};

/// Whether a terminal may be sent colours: it can show them, and the variable NO_COLOR is empty or
/// not set.
bool mayColour();

/// What `--color=WHEN` asks for: "always", "never" and "auto". With "auto" there is colour when
/// standard output is a terminal that can show it and the variable NO_COLOR is empty or not set.
/// False when `when` is none of these; `on` is then unchanged.
bool readColour(std::string_view when, bool& on);
