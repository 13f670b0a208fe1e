#pragma once

#include <string>

namespace barcode::same {

// Standard output and standard error of the process, redirected for good into memory: each call's lines are
// taken out after the call.
class Streams {
 public:
  Streams();
  Streams(const Streams&) = delete;
  Streams& operator=(const Streams&) = delete;
  ~Streams();

  // Together: both go into one file, which keeps the order of what is written to either.
  void Join(bool together);
  bool Joined() const { return m_joined; }

  // What was written since the last call; everything is in TakeOut() while joined.
  std::string TakeOut() const;
  std::string TakeErr() const;

 private:
  int m_originalOut;
  int m_originalErr;
  int m_out;
  int m_err;
  bool m_joined = false;
};

}  // namespace barcode::same
