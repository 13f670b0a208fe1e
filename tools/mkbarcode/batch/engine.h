#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "mkbarcode/batch/name_table.h"
#include "mkbarcode/batch/name_template.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/batch/parcel.h"
#include "mkbarcode/batch/parcel_queue.h"
#include "mkbarcode/jobs/job_reader.h"

namespace barcode::tool {

// How rows get their names; for an output without any there is none of this.
struct Naming {
  const NameTemplate& pattern;
  NameClaims* claims = nullptr;  // null where no two rows can have the same name
};

struct EngineParts {
  JobReader& jobs;
  Output& output;
  std::optional<Naming> naming;
  unsigned threads = 1;  // the caller's among them
  // Takes each parcel when the output has it; one at a time, in order.
  std::function<void(const Parcel&)> tell;
  std::function<bool()> isInterrupted;
  // Ends a wait for input.
  std::function<void()> wakeUp;
};

// Makes the labels of all rows. Each thread takes some rows, understands them, gives them their names in
// turn, draws them and delivers what it made; so one thread alone works without any other, and what is in
// flight is bounded by their number.
class Engine {
 public:
  explicit Engine(EngineParts parts);

  // Until there are no more rows, or it is interrupted: all rows that were taken are made then, and they are
  // the first ones. Throws what ended it early, RunError mostly.
  void Run();

  // Whether rows were left because of an interruption.
  bool HasLeftRows() const { return m_hasLeftRows; }

 private:
  // Some rows that stand one behind the other.
  struct Batch {
    std::uint64_t index = 0;
    std::uint64_t firstRow = 1;
    std::string bytes;  // of all rows
    struct Piece {
      std::size_t length = 0;
      RowProblem problem = RowProblem::kNone;
    };
    std::vector<Piece> rows;
    std::uint64_t bytesTaken = 0;
  };
  struct NamedJob {
    RawRow raw;
    Job job;
    std::string name;
  };

  void Work();
  bool TakeRows(Batch& batch);
  bool AddRow(Batch& batch);
  std::vector<NamedJob> Understand(const Batch& batch) const;
  void NameRows(std::uint64_t firstRow, std::vector<NamedJob>& jobs) const;
  void ClaimNames(std::uint64_t index, std::vector<NamedJob>& jobs);
  void Make(std::uint64_t row, const NamedJob& job, Packer& packer, Parcel& parcel) const;
  void Fail(std::uint64_t row, const NamedJob& job, const std::string& report, Parcel& parcel) const;
  void NoteCost(const Parcel& parcel, std::uint64_t nanoseconds);
  void Stop(std::exception_ptr reason);

  EngineParts m_parts;
  ParcelQueue m_queue;

  std::mutex m_inputMutex;
  std::uint64_t m_batchesTaken = 0;
  std::uint64_t m_rowsTaken = 0;
  bool m_isAtEnd = false;
  std::atomic<bool> m_hasLeftRows = false;
  std::atomic<std::size_t> m_rowsAtOnce = 1;

  std::mutex m_nameMutex;
  std::condition_variable m_named;
  std::uint64_t m_nextToName = 0;

  std::atomic<bool> m_isStopped = false;
  std::exception_ptr m_reason;
  std::mutex m_reasonMutex;
};

}  // namespace barcode::tool
