#pragma once

/// Holds back what the process writes to standard output while it lives.
class tMessageCapture {
 public:
  tMessageCapture();
  /// Drops the messages, unless they were released.
  ~tMessageCapture();
  tMessageCapture(const tMessageCapture&) = delete;
  tMessageCapture& operator=(const tMessageCapture&) = delete;

  /// Ends the capture and writes everything held back to standard output.
  void release();

 private:
  void restore();

  // -1 each when nothing could be redirected; messages then appear at once, which loses none.
  int held_ = -1;
  int output_ = -1;
};
