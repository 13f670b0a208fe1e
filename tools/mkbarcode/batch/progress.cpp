#include "mkbarcode/batch/progress.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "base/line.h"
#include "mkbarcode/io.h"

namespace barcode::tool {
namespace {

constexpr int kBarWidth = 24;

// "01:05", or "2:03:05".
std::string Duration(double seconds) {
  const auto whole = static_cast<std::int64_t>(std::ceil(seconds));
  constexpr int kMinute = 60;
  std::array<char, 32> text{};
  if (whole < std::int64_t{kMinute} * kMinute) {
    std::snprintf(text.data(), text.size(), "%02d:%02d", static_cast<int>(whole / kMinute),
                  static_cast<int>(whole % kMinute));
  } else {
    std::snprintf(text.data(), text.size(), "%lld:%02d:%02d",
                  static_cast<long long>(whole / kMinute / kMinute),  // as the format wants it
                  static_cast<int>(whole / kMinute % kMinute), static_cast<int>(whole % kMinute));
  }
  return text.data();
}

}  // namespace

Progress::Shown Progress::OnStandardError(bool isQuiet) {
  if (isQuiet) {
    return Shown::kNothing;
  }
  return isatty(STDERR_FILENO) == 1 ? Shown::kBar : Shown::kLines;
}

Progress::Progress(Shown shown, std::optional<std::uint64_t> inputSize, Intervals intervals)
    : m_shown(shown),
      m_inputSize(inputSize),
      m_intervals(intervals),
      m_start(Clock::now()),
      m_last(m_start),
      m_cleared(m_start) {
  if (m_shown != Shown::kNothing) {
    m_ticking = std::thread([this] { Tick(); });
  }
}

Progress::~Progress() {
  if (m_ticking.joinable()) {
    {
      const std::scoped_lock lock(m_mutex);
      m_isEnded = true;
    }
    m_ended.notify_one();
    m_ticking.join();
  }
  Clear();
}

Progress::Clock::duration Progress::Between() const {
  return m_shown == Shown::kBar ? m_intervals.bars : m_intervals.lines;
}

// With the mutex held. No bar comes between what is written behind Clear.
Progress::Clock::time_point Progress::NextTick() const {
  return m_shown == Shown::kBar ? std::max(m_last, m_cleared) + m_intervals.idleBars
                                : m_last + m_intervals.lines;
}

// For the times in which nobody tells anything.
void Progress::Tick() {
  std::unique_lock lock(m_mutex);
  while (!m_isEnded) {
    const Clock::time_point due = NextTick();
    if (m_ended.wait_until(lock, due, [this] { return m_isEnded; })) {
      return;
    }
    // Something may have been shown in between.
    if (const Clock::time_point now = Clock::now(); now >= NextTick()) {
      Show(now);
    }
  }
}

void Progress::Tell(const Counts& counts, std::uint64_t bytesTaken) {
  if (m_shown == Shown::kNothing) {
    return;
  }
  const std::scoped_lock lock(m_mutex);
  m_counts = counts;
  m_bytesTaken = bytesTaken;
  if (const Clock::time_point now = Clock::now(); now - m_last >= Between()) {
    Show(now);
  }
}

// With the mutex held.
void Progress::Show(Clock::time_point now) {
  m_last = now;
  std::optional<double> done;
  if (m_inputSize && *m_inputSize > 0) {
    done = std::min(1.0, static_cast<double>(m_bytesTaken) / static_cast<double>(*m_inputSize));
  }
  const std::string text = ProgressText(m_counts, done, std::chrono::duration<double>(now - m_start).count());
  if (m_shown == Shown::kBar) {
    // Back to the start of the line, which is cleared behind the text.
    WriteToStandardError(Line('\r', done ? Bar(*done) + ' ' : std::string(), text, "\x1B[K"));
    m_isBarShown = true;
  } else {
    WriteToStandardError(Line("mkbarcode: ", text, '\n'));
  }
}

void Progress::Clear() {
  if (m_shown != Shown::kBar) {
    return;
  }
  const std::scoped_lock lock(m_mutex);
  m_cleared = Clock::now();
  if (m_isBarShown) {
    WriteToStandardError("\r\x1B[K");
    m_isBarShown = false;
  }
}

std::string ProgressText(const Counts& counts, std::optional<double> done, double seconds) {
  std::string text = Line(counts.rows, counts.rows == 1 ? " row" : " rows");
  if (done) {
    constexpr double kPercent = 100;
    AppendPieces(text, ", ", static_cast<int>(*done * kPercent), " %");
  }
  if (seconds > 0) {
    AppendPieces(text, ", ", std::llround(static_cast<double>(counts.rows) / seconds), " a second");
  }
  if (done && *done > 0) {
    AppendPieces(text, ", ", Duration(seconds / *done * (1 - *done)), " left");
  }
  AppendPieces(text, ", ", counts.failed, " failed");
  return text;
}

std::string Bar(double done) {
  const int filled = static_cast<int>(done * kBarWidth);
  return Line('[', std::string(static_cast<std::size_t>(filled), '#'),
              std::string(static_cast<std::size_t>(kBarWidth - filled), '-'), ']');
}

}  // namespace barcode::tool
