#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace barcode::same {

// What a call returned: a number or nothing in words, strings and bytes as they are.
struct Result {
  std::string words;
  std::string bytes;
};

// The place where calls are written down.
class Journal {
 public:
  Journal() = default;
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  virtual ~Journal() = default;

  // How much of a text argument is quoted.
  virtual std::size_t TextLimit() const = 0;

  // The call that is about to be made: written at once, so that a call that ends the process is the last one.
  virtual void Begin(const std::string& call) = 0;

  // What came of it.
  virtual void End(const Result& result, std::string_view out, std::string_view err, bool joined) = 0;
};

// One line per call, with digests.
class RecordJournal final : public Journal {
 public:
  explicit RecordJournal(std::FILE* file) : m_file(file) {}

  // "type session", before the first call of a session.
  void SetSession(const std::string& session);

  std::size_t TextLimit() const override { return 40; }
  void Begin(const std::string& call) override;
  void End(const Result& result, std::string_view out, std::string_view err, bool joined) override;

 private:
  std::FILE* m_file;
  std::string m_session;
  int m_step = 0;
};

// Everything in full: calls and lines into the file calls.txt of a folder, documents and pictures into files
// beside it.
class FullJournal final : public Journal {
 public:
  explicit FullJournal(std::string folder);
  FullJournal(const FullJournal&) = delete;
  FullJournal& operator=(const FullJournal&) = delete;
  ~FullJournal() override;

  std::size_t TextLimit() const override { return std::string::npos; }
  void Begin(const std::string& call) override;
  void End(const Result& result, std::string_view out, std::string_view err, bool joined) override;

 private:
  void WriteLines(const char* channel, std::string_view lines);
  void Keep(std::string_view bytes);

  std::string m_folder;
  std::FILE* m_file;
  int m_step = 0;
};

}  // namespace barcode::same
