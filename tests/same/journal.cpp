#include "same/journal.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include "same/quoted.h"

namespace barcode::same {
namespace {

// Longer results become a file.
constexpr std::size_t kMostInline = 100;

std::FILE* Opened(const std::string& path) {
  std::FILE* const file = std::fopen(path.c_str(), "w");
  if (file == nullptr) {
    throw std::runtime_error("cannot write " + path);
  }
  return file;
}

const char* Extension(std::string_view bytes) {
  if (bytes.starts_with("\x89PNG")) {
    return "png";
  }
  return bytes.starts_with("<?xml") || bytes.starts_with("<svg") ? "svg" : "txt";
}

}  // namespace

void RecordJournal::SetSession(const std::string& session) {
  m_session = session;
  m_step = 0;
}

void RecordJournal::Begin(const std::string& call) {
  (void)std::fprintf(m_file, "%s %d %s", m_session.c_str(), m_step++, call.c_str());
  (void)std::fflush(m_file);
}

void RecordJournal::End(const Result& result, std::string_view out, std::string_view err, bool joined) {
  std::string line = result.words;
  if (!result.bytes.empty()) {
    line += " = " + Digest(result.bytes);
  }
  if (!out.empty()) {
    line += (joined ? " both=" : " out=") + Digest(out);
  }
  if (!err.empty()) {
    line += " err=" + Digest(err);
  }
  (void)std::fprintf(m_file, "%s\n", line.c_str());
}

FullJournal::FullJournal(std::string folder) : m_folder(std::move(folder)) {
  std::filesystem::remove_all(m_folder);
  std::filesystem::create_directories(m_folder);
  m_file = Opened(m_folder + "/calls.txt");
}

FullJournal::~FullJournal() {
  (void)std::fclose(m_file);
}

void FullJournal::Begin(const std::string& call) {
  (void)std::fprintf(m_file, "%d %s", m_step, call.c_str());
  (void)std::fflush(m_file);
}

void FullJournal::End(const Result& result, std::string_view out, std::string_view err, bool joined) {
  (void)std::fprintf(m_file, "%s", result.words.c_str());
  if (result.bytes.empty()) {
    (void)std::fputc('\n', m_file);
  } else {
    Keep(result.bytes);
  }
  WriteLines(joined ? "both" : "out", out);
  WriteLines("err", err);
  ++m_step;
}

void FullJournal::WriteLines(const char* channel, std::string_view lines) {
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    const std::string_view line = lines.substr(0, end);
    (void)std::fprintf(m_file, "    %s %s%s\n", channel, Quoted(line, std::string::npos).c_str(),
                       end == std::string_view::npos ? " (no newline)" : "");
    lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
  }
}

void FullJournal::Keep(std::string_view bytes) {
  if (bytes.size() <= kMostInline) {
    (void)std::fprintf(m_file, " = %s\n", Quoted(bytes, kMostInline).c_str());
    return;
  }
  const std::string name = std::to_string(m_step) + "." + Extension(bytes);
  (void)std::fprintf(m_file, " = %s %s\n", Digest(bytes).c_str(), name.c_str());
  std::ofstream file(m_folder + "/" + name, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace barcode::same
