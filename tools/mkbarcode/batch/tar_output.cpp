// Tar files, written by libarchive. It is opened when it is needed: with what it brings along it would cost
// every start of the program more than a label.
#include <archive.h>
#include <archive_entry.h>
#include <dlfcn.h>

#include <clocale>
#include <new>

#include "base/line.h"
#include "mkbarcode/batch/archive_file.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

// The functions of libarchive that are used here, by its own names.
struct ArchiveLibrary {
  decltype(&archive_write_new) writeNew = nullptr;
  decltype(&archive_write_set_format_pax_restricted) setFormat = nullptr;
  decltype(&archive_write_set_bytes_per_block) setBytesPerBlock = nullptr;
  decltype(&archive_write_open) open = nullptr;
  decltype(&archive_write_header) header = nullptr;
  decltype(&archive_write_data) data = nullptr;
  decltype(&archive_write_finish_entry) finishEntry = nullptr;
  decltype(&archive_write_close) close = nullptr;
  decltype(&archive_write_free) free = nullptr;
  decltype(&archive_error_string) errorString = nullptr;
  decltype(&archive_entry_new) entryNew = nullptr;
  decltype(&archive_entry_clear) entryClear = nullptr;
  decltype(&archive_entry_free) entryFree = nullptr;
  decltype(&archive_entry_set_pathname) setPathname = nullptr;
  decltype(&archive_entry_set_size) setSize = nullptr;
  decltype(&archive_entry_set_filetype) setFiletype = nullptr;
  decltype(&archive_entry_set_perm) setPerm = nullptr;
  decltype(&archive_entry_set_mtime) setMtime = nullptr;
};

template <class Function>
void Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (function == nullptr) {
    throw RunError(Line("this libarchive cannot write tar files: ", dlerror()));
  }
}

// Stays open.
ArchiveLibrary OpenLibrary() {
  void* const library = dlopen(BARCODE_LIBARCHIVE, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw RunError(Line("tar files need libarchive: ", dlerror()));
  }
  ArchiveLibrary functions;
  Find(library, "archive_write_new", functions.writeNew);
  Find(library, "archive_write_set_format_pax_restricted", functions.setFormat);
  Find(library, "archive_write_set_bytes_per_block", functions.setBytesPerBlock);
  Find(library, "archive_write_open", functions.open);
  Find(library, "archive_write_header", functions.header);
  Find(library, "archive_write_data", functions.data);
  Find(library, "archive_write_finish_entry", functions.finishEntry);
  Find(library, "archive_write_close", functions.close);
  Find(library, "archive_write_free", functions.free);
  Find(library, "archive_error_string", functions.errorString);
  Find(library, "archive_entry_new", functions.entryNew);
  Find(library, "archive_entry_clear", functions.entryClear);
  Find(library, "archive_entry_free", functions.entryFree);
  Find(library, "archive_entry_set_pathname", functions.setPathname);
  Find(library, "archive_entry_set_size", functions.setSize);
  Find(library, "archive_entry_set_filetype", functions.setFiletype);
  Find(library, "archive_entry_set_perm", functions.setPerm);
  Find(library, "archive_entry_set_mtime", functions.setMtime);
  return functions;
}

// While it lives, this thread has texts in UTF-8: libarchive takes names in the encoding of the locale, and
// the program runs in that of C.
class Utf8Locale {
 public:
  Utf8Locale() : m_locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)), m_before(uselocale(m_locale)) {}
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;
  ~Utf8Locale() {
    uselocale(m_before);
    if (m_locale != nullptr) {
      freelocale(m_locale);
    }
  }

 private:
  locale_t m_locale;  // null where the system has none: names are then marked as bytes
  locale_t m_before;
};

// Writes a part of a tar file into a text.
class TarWriter {
 public:
  explicit TarWriter(const ArchiveLibrary& library)
      : m_library(library), m_archive(library.writeNew()), m_entry(library.entryNew()) {
    if (m_archive == nullptr || m_entry == nullptr) {
      throw std::bad_alloc();
    }
    Check(library.setFormat(m_archive));
    Check(library.setBytesPerBlock(m_archive, 0));
    Check(library.open(m_archive, &m_out, nullptr, &TarWriter::Take, nullptr));
  }
  TarWriter(const TarWriter&) = delete;
  TarWriter& operator=(const TarWriter&) = delete;
  ~TarWriter() {
    m_library.entryFree(m_entry);
    m_out =
        &m_discarded;  // the end of the part, which is none of the file; without it libarchive keeps memory
    m_library.close(m_archive);
    m_library.free(m_archive);
  }

  void Add(const std::string& name, std::string_view data, std::string& out) {
    constexpr mode_t kMode = 0644;
    m_out = &out;
    m_library.entryClear(m_entry);
    m_library.setPathname(m_entry, name.c_str());
    m_library.setSize(m_entry, static_cast<la_int64_t>(data.size()));
    m_library.setFiletype(m_entry, AE_IFREG);
    m_library.setPerm(m_entry, kMode);
    m_library.setMtime(m_entry, 0, 0);
    Check(m_library.header(m_archive, m_entry));
    if (m_library.data(m_archive, data.data(), data.size()) < 0) {
      Check(ARCHIVE_FATAL);
    }
    Check(m_library.finishEntry(m_archive));
  }

  void AddEnd(std::string& out) {
    m_out = &out;
    Check(m_library.close(m_archive));
  }

 private:
  static la_ssize_t Take(archive* /*archive*/, void* out, const void* bytes, std::size_t size) {
    (*static_cast<std::string**>(out))->append(static_cast<const char*>(bytes), size);
    return static_cast<la_ssize_t>(size);
  }

  void Check(int result) const {
    if (result < ARCHIVE_WARN) {
      throw RunError(Line("cannot write the tar file: ", m_library.errorString(m_archive)));
    }
  }

  const ArchiveLibrary& m_library;
  archive* m_archive;
  archive_entry* m_entry;
  std::string* m_out = nullptr;
  std::string m_discarded;
};

class TarPacker : public Packer {
 public:
  explicit TarPacker(const ArchiveLibrary& library) : m_writer(library) {}

  void Pack(const FinishedRow& row, Parcel& parcel) override {
    CheckMemberName(row.name);
    m_writer.Add(row.name, row.label.data, parcel.bytes);
  }

 private:
  Utf8Locale m_locale;  // a packer serves the thread that made it
  TarWriter m_writer;
};

// The parts that the packers write, one behind the other, and one end.
class Tar : public Output {
 public:
  explicit Tar(const std::string& file) : m_library(OpenLibrary()), m_file(file) {}

  std::unique_ptr<Packer> NewPacker() override { return std::make_unique<TarPacker>(m_library); }

  void Write(Parcel& parcel) override { m_file.Write(parcel.bytes); }

  void Finish() override {
    std::string end;
    TarWriter(m_library).AddEnd(end);
    m_file.Write(end);
    m_file.Finish();
  }

 private:
  ArchiveLibrary m_library;
  ArchiveFile m_file;
};

}  // namespace

std::unique_ptr<Output> TarOutput(const std::string& file) {
  return std::make_unique<Tar>(file);
}

}  // namespace barcode::tool
