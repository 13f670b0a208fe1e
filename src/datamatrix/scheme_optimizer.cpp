#include "datamatrix/scheme_optimizer.h"

#include <algorithm>
#include <array>

#include "datamatrix/channel.h"

namespace barcode::datamatrix {
namespace {

using Channels = std::array<Channel, kSchemes.size()>;

// For each channel after a byte, the channel before it that it was copied from: the way back through the
// text, which all channels share.
using Origins = std::array<std::uint8_t, kSchemes.size()>;

struct Step {
  Channel channel;
  std::uint8_t origin = 0;
};

// The channels once more, each unlatched into ASCII; invalid where that is not possible.
Channels InAscii(const Channels& channels, EncoderLines& lines) {
  Channels unlatched = channels;
  for (Channel& channel : unlatched) {
    if (channel.Valid() && channel.scheme != Scheme::kAscii) {
      ChangeScheme(channel, Scheme::kAscii, lines);
    }
  }
  return unlatched;
}

// The new channel of the target scheme. A fatal candidate is taken at once; otherwise the shortest, the
// earlier one on equal lengths. Lengths are compared with their open triplets and quadruplets, as fractions
// of a codeword.
Step NextChannel(const Channels& channels, const Channels& unlatched, Scheme target, std::string_view text,
                 EncoderLines& lines) {
  Channels candidates = unlatched;
  candidates[static_cast<std::size_t>(target)] = channels[static_cast<std::size_t>(target)];
  std::size_t best = candidates.size();
  for (std::size_t source = 0; source < candidates.size(); ++source) {
    Channel& candidate = candidates[source];
    if (candidate.Valid() && candidate.scheme != target) {
      ChangeScheme(candidate, target, lines);
    }
    // A byte never makes a channel shorter.
    const bool longer = best < candidates.size() && candidate.length >= candidates[best].length;
    if (candidate.Valid() && !longer) {
      EncodeNext(candidate, target, text, lines);
    }
    if (candidate.status == ChannelStatus::kFatal) {
      return {candidate, static_cast<std::uint8_t>(source)};
    }
    if (candidate.Valid() && (best == candidates.size() || candidate.length < candidates[best].length)) {
      best = source;
    }
  }
  if (best == candidates.size()) {
    return {{.status = ChannelStatus::kInvalid}, 0};
  }
  return {candidates[best], static_cast<std::uint8_t>(best)};
}

SchemePlan TraceBack(const std::vector<Origins>& origins, std::size_t lastChannel) {
  SchemePlan plan;
  std::size_t channel = lastChannel;
  for (std::size_t position = origins.size(); position-- > 0;) {
    if (plan.empty() || plan.back().scheme != kSchemes[channel]) {
      plan.push_back({kSchemes[channel], position, plan.empty() ? origins.size() : plan.back().begin});
    }
    plan.back().begin = position;
    channel = origins[position][channel];
  }
  std::reverse(plan.begin(), plan.end());
  return plan;
}

}  // namespace

std::optional<SchemePlan> FixedPlan(std::string_view text, Scheme scheme, EncoderLines& lines) {
  Channel channel = StartChannel(scheme);
  while (channel.Valid() && channel.position < text.size()) {
    EncodeNext(channel, scheme, text, lines);
  }
  if (!channel.Valid()) {
    return std::nullopt;
  }
  return SchemePlan{{scheme, 0, text.size()}};
}

std::vector<SchemePlan> OptimizePlans(std::string_view text, EncoderLines& lines) {
  Channels channels;
  for (std::size_t number = 0; number < channels.size(); ++number) {
    channels[number] = StartChannel(kSchemes[number]);
  }
  std::vector<Origins> origins;
  origins.reserve(text.size());
  const auto valid = [](const Channel& channel) { return channel.Valid(); };
  while (origins.size() < text.size() && std::any_of(channels.begin(), channels.end(), valid)) {
    const Channels unlatched = InAscii(channels, lines);
    Channels next;
    Origins nextOrigins{};
    for (std::size_t target = 0; target < next.size(); ++target) {
      const Step step = NextChannel(channels, unlatched, kSchemes[target], text, lines);
      next[target] = step.channel;
      nextOrigins[target] = step.origin;
    }
    channels = next;
    origins.push_back(nextOrigins);
  }
  std::vector<SchemePlan> plans;
  for (std::size_t number = 0; number < channels.size(); ++number) {
    if (channels[number].Valid() && channels[number].position == text.size()) {
      plans.push_back(TraceBack(origins, number));
    }
  }
  return plans;
}

}  // namespace barcode::datamatrix
