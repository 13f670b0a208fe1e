#include "same/compare.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace barcode::same {
namespace {

constexpr std::size_t kMostShown = 20;

// The lines of a session by its name "type session".
using Record = std::map<std::string, std::vector<std::string>>;

std::string SessionOf(const std::string& line) {
  const std::size_t type = line.find(' ');
  return line.substr(0, type == std::string::npos ? type : line.find(' ', type + 1));
}

Record Read(const std::string& path, std::vector<std::string>& order) {
  std::ifstream file(path);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  Record record;
  for (std::string line; std::getline(file, line);) {
    const std::string session = SessionOf(line);
    std::vector<std::string>& lines = record[session];
    if (lines.empty()) {
      order.push_back(session);
    }
    lines.push_back(line);
  }
  return record;
}

std::string LineAt(const std::vector<std::string>& lines, std::size_t i) {
  return i < lines.size() ? lines[i] : "(nothing: the record ends)";
}

// What both lines begin with, in whole words, stands once.
void PrintPair(const std::string& before, const std::string& after) {
  const auto differs = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
  const std::size_t space = before.rfind(' ', static_cast<std::size_t>(differs - before.begin()));
  const std::size_t common = space == std::string::npos || space >= after.size() ? 0 : space;
  std::cout << "  " << before.substr(0, common) << "\n    base: " << before.substr(common)
            << "\n    new:  " << after.substr(common) << "\n";
}

struct Differences {
  std::size_t lines = 0;
  std::set<std::string> sessions;
};

// One session: all of its lines count, the first of them is shown.
void CompareSession(const std::string& session, const std::vector<std::string>& base,
                    const std::vector<std::string>& changed, Differences& differences) {
  for (std::size_t i = 0; i < std::max(base.size(), changed.size()); ++i) {
    const std::string before = LineAt(base, i);
    const std::string after = LineAt(changed, i);
    if (before == after) {
      continue;
    }
    ++differences.lines;
    if (differences.sessions.insert(session).second && differences.sessions.size() <= kMostShown) {
      PrintPair(before, after);
    }
  }
}

void PrintSummary(const Differences& differences, std::size_t calls, std::size_t sessions) {
  std::cout << differences.lines << " of " << calls << " calls differ, in " << differences.sessions.size()
            << " of " << sessions << " sessions (the first difference of each is shown, of " << kMostShown
            << " sessions at most).\nSessions that differ, by type:";
  std::map<std::string, int> types;
  for (const std::string& session : differences.sessions) {
    ++types[session.substr(0, session.find(' '))];
  }
  for (const auto& [type, count] : types) {
    std::cout << " " << type << " " << count;
  }
  std::cout << "\n";
}

}  // namespace

bool CompareRecords(const std::string& basePath, const std::string& newPath) {
  std::vector<std::string> order;
  std::vector<std::string> newOrder;
  const Record base = Read(basePath, order);
  const Record changed = Read(newPath, newOrder);
  if (order.empty() || newOrder.empty()) {
    throw std::runtime_error("a record is empty");
  }
  std::copy_if(newOrder.begin(), newOrder.end(), std::back_inserter(order),
               [&](const std::string& session) { return base.find(session) == base.end(); });
  Differences differences;
  std::size_t calls = 0;
  static const std::vector<std::string> kNothing;
  for (const std::string& session : order) {
    const auto before = base.find(session);
    const auto after = changed.find(session);
    const auto& linesBefore = before == base.end() ? kNothing : before->second;
    const auto& linesAfter = after == changed.end() ? kNothing : after->second;
    calls += std::max(linesBefore.size(), linesAfter.size());
    CompareSession(session, linesBefore, linesAfter, differences);
  }
  if (differences.lines == 0) {
    std::cout << calls << " calls in " << order.size() << " sessions: identical\n";
    return true;
  }
  PrintSummary(differences, calls, order.size());
  return false;
}

}  // namespace barcode::same
