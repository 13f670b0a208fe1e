#pragma once

#include <string>
#include <vector>

#include "same/host.h"

namespace barcode::same {

// What a session is made from: the words "code39", "12" and a seed.
struct SessionName {
  std::string type;     // a type's name, "mixed" or "none"
  std::string session;  // a number, or "f" and a number for those without chance
};

// Every session of the types asked for ("" for all), so many random ones of each.
std::vector<SessionName> AllSessions(const std::string& type, int sessions);

// Whether every fourth session sends both streams into one file.
bool StreamsJoined(const SessionName& name);

// Makes the calls of a session. Throws std::runtime_error for a name that does not exist.
void RunSession(Host& host, const SessionName& name, int seed);

}  // namespace barcode::same
