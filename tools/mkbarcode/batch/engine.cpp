#include "mkbarcode/batch/engine.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <nlohmann/json.hpp>
#include <thread>
#include <utility>

#include "base/line.h"
#include "label/excerpt.h"
#include "label/label.h"
#include "label/report.h"
#include "mkbarcode/jobs/failures.h"

namespace barcode::tool {
namespace {

using label::ErrorCode;
using label::LabelError;

// Rows at once: enough for the handing over not to count, few enough for a parcel to be small and soon done.
constexpr std::size_t kMostRows = 128;
constexpr std::uint64_t kParcelBytes = std::uint64_t{1} << 16U;
constexpr std::uint64_t kParcelNanoseconds = 5'000'000;
constexpr std::size_t kInputBytes = std::size_t{1} << 18U;

LabelError RepeatedName(const std::string& name) {
  return {ErrorCode::kBadValue, "name",
          Line("An earlier row has the name \"", label::ExcerptForMessage(name),
               "\"; let --name tell the rows apart, or give --number-duplicates.")};
}

label::Label MakeLabel(const label::Request& request) {
  try {
    return label::Make(request);
  } catch (const std::bad_alloc&) {
    return {.data = "", .mediaType = "", .report = label::kOutOfMemoryReport, .ok = false};
  }
}

bool HasWarnings(const label::Label& label) {
  return !label.report.starts_with(R"({"ok":true,"warnings":[])");
}

}  // namespace

Engine::Engine(EngineParts parts)
    : m_parts(std::move(parts)),
      m_queue(
          [this](Parcel& parcel) {
            m_parts.output.Write(parcel);
            m_parts.tell(parcel);
          },
          // One waits for each thread beside the one that it makes.
          std::size_t{2} * m_parts.threads) {}

void Engine::Run() {
  std::vector<std::jthread> others;
  for (unsigned i = 1; i < m_parts.threads; ++i) {
    others.emplace_back([this] { Work(); });
  }
  Work();
  others.clear();  // waits for them
  if (m_reason) {
    std::rethrow_exception(m_reason);
  }
}

void Engine::Work() {
  try {
    const std::unique_ptr<Packer> packer = m_parts.output.NewPacker();
    Batch batch;
    while (TakeRows(batch)) {
      const auto start = std::chrono::steady_clock::now();
      std::vector<NamedJob> jobs = Understand(batch);
      ClaimNames(batch.index, jobs);
      Parcel parcel;
      parcel.bytesTaken = batch.bytesTaken;
      for (std::size_t i = 0; i < jobs.size() && !m_isStopped; ++i) {
        Make(batch.firstRow + i, jobs[i], *packer, parcel);
      }
      if (m_isStopped) {
        return;
      }
      NoteCost(parcel, static_cast<std::uint64_t>(
                           std::chrono::nanoseconds(std::chrono::steady_clock::now() - start).count()));
      m_queue.Deliver(batch.index, std::move(parcel));
    }
  } catch (...) {
    Stop(std::current_exception());
  }
}

void Engine::Stop(std::exception_ptr reason) {
  {
    const std::scoped_lock lock(m_reasonMutex);
    m_reason = m_reason ? m_reason : std::move(reason);
  }
  {
    const std::scoped_lock lock(m_nameMutex);
    m_isStopped = true;
  }
  m_named.notify_all();
  m_queue.Abandon();
  m_parts.wakeUp();
}

// Rows that are here already, without waiting for more; waits for the first one.
bool Engine::TakeRows(Batch& batch) {
  const std::scoped_lock lock(m_inputMutex);
  batch.bytes.clear();
  batch.rows.clear();
  const std::size_t most = m_rowsAtOnce;
  while (!m_isAtEnd && !m_isStopped && batch.rows.size() < most && batch.bytes.size() < kInputBytes) {
    if (m_parts.isInterrupted()) {
      m_hasLeftRows = true;
      m_isAtEnd = true;
    } else if (!AddRow(batch)) {
      if (m_parts.jobs.Rows().IsAtEnd()) {
        m_isAtEnd = true;
      } else if (!batch.rows.empty()) {
        break;
      } else {
        m_parts.jobs.Rows().Fill();
      }
    }
  }
  if (batch.rows.empty() || m_isStopped) {
    return false;
  }
  batch.index = m_batchesTaken++;
  batch.firstRow = m_rowsTaken + 1;
  batch.bytesTaken = m_parts.jobs.Rows().BytesTaken();
  m_rowsTaken += batch.rows.size();
  return true;
}

bool Engine::AddRow(Batch& batch) {
  const std::optional<RawRow> row = m_parts.jobs.Rows().Next();
  if (!row) {
    return false;
  }
  batch.bytes += row->bytes;
  batch.rows.push_back({row->bytes.size(), row->problem});
  return true;
}

std::vector<Engine::NamedJob> Engine::Understand(const Batch& batch) const {
  std::vector<NamedJob> jobs;
  jobs.reserve(batch.rows.size());
  std::string_view rest = batch.bytes;
  for (const Batch::Piece& piece : batch.rows) {
    const RawRow raw = {rest.substr(0, piece.length), piece.problem};
    jobs.push_back({raw, m_parts.jobs.Parser().Parse(raw), ""});
    rest.remove_prefix(piece.length);
  }
  if (m_parts.naming) {
    NameRows(batch.firstRow, jobs);
  }
  return jobs;
}

void Engine::NameRows(std::uint64_t firstRow, std::vector<NamedJob>& jobs) const {
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    if (jobs[i].job.error) {
      continue;
    }
    try {
      jobs[i].name = m_parts.naming->pattern.NameOf(firstRow + i, jobs[i].job);
    } catch (const LabelError& error) {
      jobs[i].job.error = error;
    }
  }
}

// Which of two rows is the later one does not depend on which thread comes first.
void Engine::ClaimNames(std::uint64_t index, std::vector<NamedJob>& jobs) {
  if (!m_parts.naming || m_parts.naming->claims == nullptr) {
    return;
  }
  std::unique_lock lock(m_nameMutex);
  m_named.wait(lock, [&] { return m_isStopped || m_nextToName == index; });
  for (NamedJob& job : jobs) {
    if (job.job.error || m_isStopped) {
      continue;
    }
    if (std::optional<std::string> name = m_parts.naming->claims->Claim(job.name)) {
      job.name = *std::move(name);
    } else {
      job.job.error = RepeatedName(job.name);
    }
  }
  ++m_nextToName;
  m_named.notify_all();
}

void Engine::Make(std::uint64_t row, const NamedJob& job, Packer& packer, Parcel& parcel) const {
  ++parcel.counts.rows;
  label::Label label;
  try {
    if (job.job.error) {
      throw LabelError(*job.job.error);
    }
    if (m_parts.naming && packer.Has(job.name)) {
      ++parcel.counts.skipped;
      return;
    }
    label = MakeLabel(job.job.request);
    if (label.ok) {
      packer.Pack({row, job.name, label}, parcel);
      ++parcel.counts.drawn;
      parcel.counts.warned += HasWarnings(label) ? 1 : 0;
      return;
    }
  } catch (const LabelError& error) {
    label = {.data = "", .mediaType = "", .report = label::RefusedReport(error, nullptr), .ok = false};
  }
  packer.PackRefused({row, job.name, label}, parcel);
  Fail(row, job, label.report, parcel);
}

void Engine::Fail(std::uint64_t row, const NamedJob& job, const std::string& report, Parcel& parcel) const {
  ++parcel.counts.failed;
  const auto document = nlohmann::ordered_json::parse(report);
  AppendFailure(parcel.failures, row, m_parts.jobs.Parser().AsJson(job.raw), document.at("error").dump());
}

// As many rows at once as a parcel of a good size holds, by the last one.
void Engine::NoteCost(const Parcel& parcel, std::uint64_t nanoseconds) {
  const std::uint64_t rows = std::max<std::uint64_t>(parcel.counts.rows, 1);
  const std::uint64_t bytes = std::max<std::uint64_t>(parcel.bytes.size() / rows, 1);
  const std::uint64_t time = std::max<std::uint64_t>(nanoseconds / rows, 1);
  m_rowsAtOnce =
      std::clamp<std::size_t>(std::min(kParcelBytes / bytes, kParcelNanoseconds / time), 1, kMostRows);
}

}  // namespace barcode::tool
