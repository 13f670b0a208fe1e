#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "label/label.h"
#include "mkbarcode/batch/parcel.h"

namespace barcode::tool {

// A row whose label has been made, or refused.
struct FinishedRow {
  std::uint64_t number = 0;
  const std::string& name;  // below the directory or in the archive; empty where there are no names
  const label::Label& label;
};

// Puts labels into parcels. Each thread has its own. What one throws as LabelError is the failure of one row,
// a RunError that of the run.
class Packer {
 public:
  Packer() = default;
  Packer(const Packer&) = delete;
  Packer& operator=(const Packer&) = delete;
  virtual ~Packer() = default;

  // Whether the label is there already.
  virtual bool Has(const std::string& /*name*/) { return false; }
  virtual void Pack(const FinishedRow& row, Parcel& parcel) = 0;
  virtual void PackRefused(const FinishedRow& /*row*/, Parcel& /*parcel*/) {}
};

// Where the labels of a run go.
class Output {
 public:
  Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  virtual ~Output() = default;

  virtual std::unique_ptr<Packer> NewPacker() = 0;
  // Parcels come in the order of rows, one at a time. Throws RunError.
  virtual void Write(Parcel& parcel) = 0;
  // All rows are there. Throws RunError. Without it nothing stays of an archive.
  virtual void Finish() {}
};

// One line of JSON for each row.
std::unique_ptr<Output> JsonLinesOutput(int descriptor);

// A file for each label. Makes the directory where it is missing; skipExisting: Has() tells of files.
std::unique_ptr<Output> DirectoryOutput(const std::string& directory, bool skipExisting);

std::unique_ptr<Output> TarOutput(const std::string& file);
std::unique_ptr<Output> ZipOutput(const std::string& file);

}  // namespace barcode::tool
