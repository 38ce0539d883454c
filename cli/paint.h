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

/// Whether the terminal `descriptor`, if it is one, may be sent colours: it can show them, and the
/// environment variable NO_COLOR is empty or not set.
bool mayColour(int descriptor);
