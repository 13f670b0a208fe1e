// Zip files as PKWARE's APPNOTE has them, with the extensions for large ones. The directory that ends the
// file waits in a nameless file beside it: memory stays the same however many members there are. (libarchive
// keeps some 80 bytes of each.)
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "base/line.h"
#include "mkbarcode/batch/archive_file.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

enum class Method : std::uint16_t { kStored = 0, kDeflated = 8 };

constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kVersionOfLarge = 45;
constexpr std::uint16_t kMadeOnUnix = 3U << 8U;
constexpr std::uint16_t kNamesInUtf8 = 1U << 11U;
// The first day that there is: 1980-01-01.
constexpr std::uint16_t kDate = 1U << 5U | 1U;
constexpr std::uint16_t kTime = 0;
constexpr std::uint32_t kFileMode = 0100644U << 16U;
constexpr std::uint32_t kLarge32 = 0xFFFFFFFF;
constexpr std::uint16_t kLarge16 = 0xFFFF;

// Lengths and places in an entry of the directory.
constexpr std::size_t kEntryLength = 46;
constexpr std::size_t kNameLengthAt = 28;
constexpr std::size_t kExtraLengthAt = 30;
constexpr std::size_t kOffsetAt = 42;

template <class Number>
void Append(std::string& out, Number number) {
  for (std::size_t i = 0; i < sizeof number; ++i) {
    out += static_cast<char>(static_cast<std::uint64_t>(number) >> 8U * i & 0xFFU);
  }
}

template <class Number>
void Put(std::string& out, std::size_t position, Number number) {
  std::string bytes;
  Append(bytes, number);
  out.replace(position, bytes.size(), bytes);
}

template <class Number>
Number Get(std::string_view bytes, std::size_t position) {
  Number number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) {
    number = static_cast<Number>(number | static_cast<Number>(static_cast<unsigned char>(bytes[position + i]))
                                              << 8U * i);
  }
  return number;
}

const Bytef* BytesOf(std::string_view text) {
  return reinterpret_cast<const Bytef*>(text.data());
}

// Raw deflate, with what it needs kept from one member to the next.
class Deflater {
 public:
  Deflater() {
    constexpr int kRaw = -15;
    constexpr int kMemoryLevel = 8;
    if (deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kRaw, kMemoryLevel, Z_DEFAULT_STRATEGY) !=
        Z_OK) {
      throw std::bad_alloc();
    }
  }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater() { deflateEnd(&m_stream); }

  const std::string& Deflate(std::string_view bytes) {
    deflateReset(&m_stream);
    m_out.resize(deflateBound(&m_stream, bytes.size()));
    m_stream.next_in = const_cast<Bytef*>(BytesOf(bytes));
    m_stream.avail_in = static_cast<uInt>(bytes.size());
    m_stream.next_out = reinterpret_cast<Bytef*>(m_out.data());
    m_stream.avail_out = static_cast<uInt>(m_out.size());
    deflate(&m_stream, Z_FINISH);
    m_out.resize(m_stream.total_out);
    return m_out;
  }

 private:
  z_stream m_stream{};
  std::string m_out;
};

class ZipPacker : public Packer {
 public:
  void Pack(const FinishedRow& row, Parcel& parcel) override {
    CheckMemberName(row.name);
    const std::string& data = row.label.data;
    std::string_view packed = data;
    Method method = Method::kStored;
    // A PNG is compressed already.
    if (row.label.mediaType != "image/png") {
      const std::string_view deflated = m_deflater.Deflate(data);
      method = deflated.size() < data.size() ? Method::kDeflated : Method::kStored;
      packed = method == Method::kDeflated ? deflated : packed;
    }
    const auto sum = static_cast<std::uint32_t>(crc32(0, BytesOf(data), static_cast<uInt>(data.size())));
    const auto offset = static_cast<std::uint32_t>(parcel.bytes.size());

    std::string common;
    Append(common, kVersion);
    Append(common, kNamesInUtf8);
    Append(common, static_cast<std::uint16_t>(method));
    Append(common, kTime);
    Append(common, kDate);
    Append(common, sum);
    Append(common, static_cast<std::uint32_t>(packed.size()));
    Append(common, static_cast<std::uint32_t>(data.size()));
    Append(common, static_cast<std::uint16_t>(row.name.size()));
    Append(common, std::uint16_t{0});  // extra field
    AppendPieces(parcel.bytes, "PK\3\4", common, row.name, packed);

    parcel.directory += "PK\1\2";
    Append(parcel.directory, static_cast<std::uint16_t>(kMadeOnUnix | kVersion));
    parcel.directory += common;
    Append(parcel.directory, std::uint16_t{0});  // comment
    Append(parcel.directory, std::uint16_t{0});  // disk
    Append(parcel.directory, std::uint16_t{0});  // internal attributes
    Append(parcel.directory, kFileMode);
    Append(parcel.directory, offset);  // in the parcel, as yet
    parcel.directory += row.name;
  }

 private:
  Deflater m_deflater;
};

class Zip : public Output {
 public:
  explicit Zip(const std::string& file) : m_file(file), m_directory(OpenNameless(m_file.Directory())) {
    if (m_directory.Number() < 0) {
      FailWithErrno("cannot make a file in " + m_file.Directory());
    }
  }

  std::unique_ptr<Packer> NewPacker() override { return std::make_unique<ZipPacker>(); }

  void Write(Parcel& parcel) override {
    std::string entries;
    for (std::string_view rest = parcel.directory; !rest.empty();) {
      const std::size_t length = kEntryLength + Get<std::uint16_t>(rest, kNameLengthAt);
      AppendEntry(entries, rest.substr(0, length));
      rest.remove_prefix(length);
    }
    if (!WriteDescriptor(m_directory.Number(), entries)) {
      FailWithErrno("cannot write the directory of the zip file");
    }
    m_directorySize += entries.size();
    m_file.Write(parcel.bytes);
  }

  void Finish() override {
    const std::uint64_t start = m_file.Size();
    CopyDirectory();
    m_file.Write(EndOfFile(start));
    m_file.Finish();
  }

 private:
  // An entry with its place in the file instead of that in the parcel.
  void AppendEntry(std::string& entries, std::string_view entry) {
    const std::uint64_t offset = m_file.Size() + Get<std::uint32_t>(entry, kOffsetAt);
    std::string placed(entry);
    if (offset < kLarge32) {
      Put(placed, kOffsetAt, static_cast<std::uint32_t>(offset));
    } else {
      constexpr std::size_t kVersionNeededAt = 6;
      constexpr std::uint16_t kExtraLength = 12;
      Put(placed, kVersionNeededAt, kVersionOfLarge);
      Put(placed, kExtraLengthAt, kExtraLength);
      Put(placed, kOffsetAt, kLarge32);
      Append(placed, std::uint16_t{1});  // zip64: what did not find room above
      Append(placed, static_cast<std::uint16_t>(sizeof offset));
      Append(placed, offset);
    }
    entries += placed;
    ++m_members;
  }

  void CopyDirectory() {
    std::array<char, 65536> block{};
    for (std::uint64_t done = 0; done < m_directorySize;) {
      const ssize_t count = pread(m_directory.Number(), block.data(), block.size(), static_cast<off_t>(done));
      if (count <= 0) {
        FailWithErrno("cannot read the directory of the zip file");
      }
      m_file.Write({block.data(), static_cast<std::size_t>(count)});
      done += static_cast<std::uint64_t>(count);
    }
  }

  std::string EndOfFile(std::uint64_t start) const {
    std::string end;
    const bool isLarge = m_members >= kLarge16 || start >= kLarge32 || m_directorySize >= kLarge32;
    if (isLarge) {
      constexpr std::uint64_t kRest = 44;  // of this record, behind its length
      end += "PK\6\6";
      Append(end, kRest);
      Append(end, static_cast<std::uint16_t>(kMadeOnUnix | kVersionOfLarge));
      Append(end, kVersionOfLarge);
      Append(end, std::uint32_t{0});  // this disk
      Append(end, std::uint32_t{0});  // that of the directory
      Append(end, m_members);
      Append(end, m_members);
      Append(end, m_directorySize);
      Append(end, start);
      end += "PK\6\7";
      Append(end, std::uint32_t{0});
      Append(end, start + m_directorySize);
      Append(end, std::uint32_t{1});  // disks
    }
    const auto members = static_cast<std::uint16_t>(std::min<std::uint64_t>(m_members, kLarge16));
    end += "PK\5\6";
    Append(end, std::uint16_t{0});
    Append(end, std::uint16_t{0});
    Append(end, members);
    Append(end, members);
    Append(end, static_cast<std::uint32_t>(std::min<std::uint64_t>(m_directorySize, kLarge32)));
    Append(end, static_cast<std::uint32_t>(std::min<std::uint64_t>(start, kLarge32)));
    Append(end, std::uint16_t{0});  // comment
    return end;
  }

  ArchiveFile m_file;
  Descriptor m_directory;
  std::uint64_t m_directorySize = 0;
  std::uint64_t m_members = 0;
};

}  // namespace

std::unique_ptr<Output> ZipOutput(const std::string& file) {
  return std::make_unique<Zip>(file);
}

}  // namespace barcode::tool
