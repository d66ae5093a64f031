#include "hosts/workbook/zip_archive.h"

#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "hosts/workbook/refuse.h"

namespace mervane::workbook {

namespace {

constexpr std::uint64_t ratioMatters = std::uint64_t{64} << 20;

struct ArchiveCloser {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ArchivePointer = std::unique_ptr<zip_t, ArchiveCloser>;

/// @param kept where it is given, the archive can be changed, and its bytes are there to be read after it is closed.
ArchivePointer openBytes(const std::string& bytes, zip_source_t** kept) {
  zip_error_t error;
  zip_error_init(&error);
  const void* data = bytes.data();
  // NB: the library frees the bytes of an archive that it writes, whoever owns them; so it gets its own.
  void* copy = nullptr;
  if (kept != nullptr) {
    copy = std::malloc(std::max<std::size_t>(bytes.size(), 1));
    if (copy == nullptr) raise(runtime::outOfMemory);
    std::memcpy(copy, bytes.data(), bytes.size());
    data = copy;
  }
  zip_source_t* source = zip_source_buffer_create(data, bytes.size(), copy != nullptr ? 1 : 0, &error);
  if (source == nullptr) std::free(copy);
  zip_t* archive = source != nullptr ? zip_open_from_source(source, kept != nullptr ? 0 : ZIP_RDONLY, &error) : nullptr;
  if (archive == nullptr) {
    if (source != nullptr) zip_source_free(source);
  } else if (kept != nullptr) {
    zip_source_keep(source);
    *kept = source;
  }
  zip_error_fini(&error);
  return ArchivePointer(archive);
}

/// Serves content that is deflated already: the library sees its method, sizes and checksum and stores it as it is.
struct DeflatedSource {
  const DeflatedContent* content;
  std::size_t at = 0;

  static zip_int64_t call(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto* self = static_cast<DeflatedSource*>(state);
    switch (command) {
      case ZIP_SOURCE_OPEN:
        self->at = 0;
        return 0;
      case ZIP_SOURCE_READ: {
        const auto count =
            static_cast<std::size_t>(std::min<zip_uint64_t>(length, self->content->bytes.size() - self->at));
        std::memcpy(data, self->content->bytes.data() + self->at, count);
        self->at += count;
        return static_cast<zip_int64_t>(count);
      }
      case ZIP_SOURCE_STAT: {
        auto* stat = static_cast<zip_stat_t*>(data);
        zip_stat_init(stat);
        stat->size = self->content->size;
        stat->comp_size = self->content->bytes.size();
        stat->crc = self->content->crc;
        stat->comp_method = ZIP_CM_DEFLATE;
        stat->valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
        return sizeof(zip_stat_t);
      }
      case ZIP_SOURCE_FREE:
        delete self;
        return 0;
      case ZIP_SOURCE_CLOSE:
        return 0;
      case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_FREE, -1);
      default:
        return -1;
    }
  }
};

std::string withForwardSlashes(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

}  // namespace

struct ZipArchive::Handle {
  ArchivePointer archive;
};

ZipArchive::ZipArchive(std::string bytes, std::string fileName, const PackageLimits& limits)
    : bytes_(std::move(bytes)), fileName_(std::move(fileName)), handle_(std::make_unique<Handle>()) {
  handle_->archive = openBytes(bytes_, nullptr);
  zip_t* archive = handle_->archive.get();
  if (archive == nullptr) {
    refuse("The file \"" + fileName_ +
           "\" is damaged: it begins like a workbook, but its table of contents cannot be "
           "read. Take an undamaged copy of it.");
  }
  const std::uint64_t count = static_cast<std::uint64_t>(std::max<zip_int64_t>(zip_get_num_entries(archive, 0), 0));
  const auto tooMuch = [&](const std::string& what) {
    refuse("The file \"" + fileName_ + "\" is refused: " + what + ", which no ordinary workbook has.");
  };
  if (count > limits.entries) tooMuch("it holds " + std::to_string(count) + " parts");
  std::uint64_t total = 0;
  std::unordered_set<std::string> seen;
  for (std::uint64_t i = 0; i < count; ++i) {
    zip_stat_t stat;
    if (zip_stat_index(archive, i, 0, &stat) != 0 || (stat.valid & ZIP_STAT_NAME) == 0) damaged("");
    Entry entry{withForwardSlashes(stat.name), stat.size, stat.comp_size};
    if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
      refuse("The file \"" + fileName_ +
             "\" is encrypted. Open it in the spreadsheet, take its password off and save it.");
    }
    if (entry.size > limits.entrySize)
      tooMuch("its part \"" + entry.name + "\" unpacks to " + std::to_string(entry.size) + " bytes");
    if (entry.size > ratioMatters && entry.size / std::max<std::uint64_t>(entry.packedSize, 1) > limits.ratio) {
      tooMuch("its part \"" + entry.name + "\" unpacks to more than " + std::to_string(limits.ratio) +
              " times its size");
    }
    total += entry.size;
    if (total > limits.totalSize)
      tooMuch("its parts unpack to more than " + std::to_string(limits.totalSize) + " bytes");
    // Two parts of one name would leave it open which of them is meant.
    if (!seen.insert(entry.name).second) damaged(entry.name);
    entries_.push_back(std::move(entry));
  }
}

ZipArchive::~ZipArchive() = default;

void ZipArchive::damaged(std::string_view entry) const {
  std::string text = "The file \"" + fileName_ + "\" is damaged";
  if (!entry.empty()) text += " at its part \"" + std::string(entry) + "\"";
  refuse(text + ". Take an undamaged copy, or let the spreadsheet repair it and save it anew.");
}

ZipArchive::Reader ZipArchive::reader(std::size_t index) const {
  std::shared_ptr<zip_file_t> entry(zip_fopen_index(handle_->archive.get(), index, 0), [](zip_file_t* opened) {
    if (opened != nullptr) zip_fclose(opened);
  });
  if (entry == nullptr) damaged(entries_[index].name);
  std::uint64_t left = entries_[index].size;
  return [this, entry, index, left](char* bytes, std::size_t size) mutable -> std::size_t {
    const zip_int64_t count = zip_fread(entry.get(), bytes, size);
    // The library tests the checksum at the end. Sizes that do not hold what they say are a trick or damage.
    if (count < 0 || static_cast<std::uint64_t>(count) > left || (count == 0 && left > 0))
      damaged(entries_[index].name);
    left -= static_cast<std::uint64_t>(count);
    return static_cast<std::size_t>(count);
  };
}

std::string ZipArchive::with(const std::vector<Change>& changes) const {
  zip_source_t* source = nullptr;
  ArchivePointer archive = openBytes(bytes_, &source);
  if (archive == nullptr) damaged("");
  struct SourceFreer {
    void operator()(zip_source_t* kept) const { zip_source_free(kept); }
  };
  const std::unique_ptr<zip_source_t, SourceFreer> keeper(source);
  const auto cannot = [&](const std::string& what) {
    refuse("The workbook \"" + fileName_ + "\" cannot be packed: " + what + ".");
  };

  std::unordered_map<std::string_view, std::uint64_t> places;
  for (std::size_t i = 0; i < entries_.size(); ++i) places.emplace(entries_[i].name, i);
  for (const Change& change : changes) {
    const auto place = places.find(change.name);
    if (change.kind == Change::Kind::remove) {
      if (place != places.end() && zip_delete(archive.get(), place->second) != 0) cannot(zip_strerror(archive.get()));
      continue;
    }
    zip_source_t* content = nullptr;
    if (change.kind == Change::Kind::stored) {
      content = zip_source_buffer(archive.get(), change.content->data(), change.content->size(), 0);
    } else {
      auto state = std::make_unique<DeflatedSource>(DeflatedSource{change.deflated});
      content = zip_source_function(archive.get(), DeflatedSource::call, state.get());
      if (content != nullptr) static_cast<void>(state.release());
    }
    if (content == nullptr) cannot(zip_strerror(archive.get()));
    zip_int64_t index = 0;
    if (place != places.end()) {
      index = static_cast<zip_int64_t>(place->second);
      if (zip_file_replace(archive.get(), place->second, content, 0) != 0) index = -1;
    } else {
      index = zip_file_add(archive.get(), change.name.c_str(), content, ZIP_FL_ENC_UTF_8);
    }
    if (index < 0) {
      zip_source_free(content);
      cannot(zip_strerror(archive.get()));
    }
    if (zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 0) != 0) {
      cannot(zip_strerror(archive.get()));
    }
  }
  if (zip_close(archive.get()) != 0) cannot(zip_strerror(archive.get()));
  static_cast<void>(archive.release());

  std::string packed;
  if (zip_source_open(source) != 0) cannot("the result cannot be read back");
  zip_stat_t stat;
  if (zip_source_stat(source, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) != 0) {
    packed.resize(static_cast<std::size_t>(stat.size));
    std::size_t at = 0;
    while (at < packed.size()) {
      const zip_int64_t count = zip_source_read(source, packed.data() + at, packed.size() - at);
      if (count <= 0) break;
      at += static_cast<std::size_t>(count);
    }
    packed.resize(at);
  }
  zip_source_close(source);
  if (packed.empty()) cannot("the result cannot be read back");
  return packed;
}

}  // namespace mervane::workbook
