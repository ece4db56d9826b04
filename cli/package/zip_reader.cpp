#include "cli/package/zip_reader.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>

#include "cli/failure.h"
#include "cli/package/zip_format.h"

#include <zlib.h>

namespace cli {
namespace {

// No deflated byte stands for more bytes than this: what claims more is forged, and must not make
// us allocate what it claims.
constexpr std::uint64_t greatest_ratio = 1032;
constexpr std::uint64_t greatest_size = 1 << 30;

// The container of documents with a password, and of all documents before there were zip packages.
constexpr std::string_view compound_mark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

std::wstring shown(std::string_view name) {
    std::wstring text;
    for (const char character : name)
        text += character >= ' ' && character <= '~' ? static_cast<wchar_t>(character) : L'?';
    return text;
}

// Names inside such a container are UTF-16.
bool holds_encrypted_package(std::string_view compound) {
    std::string name;
    for (const char character : std::string_view("EncryptedPackage"))
        name.append({character, '\0'});
    return compound.find(name) != compound.npos;
}

class Inflater {
  public:
    Inflater() : is_ready_(inflateInit2(&stream_, -MAX_WBITS) == Z_OK) {}
    ~Inflater() {
        if (is_ready_) inflateEnd(&stream_);
    }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    // True when `packed` is one whole stream of exactly as many bytes as `bytes` has.
    bool fill(std::string& bytes, std::string_view packed) {
        if (!is_ready_) throw std::bad_alloc();
        // A stream of nothing has an end to read, too, for which zlib wants an address.
        char nothing = 0;
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
        stream_.avail_in = static_cast<uInt>(packed.size());
        stream_.next_out = reinterpret_cast<Bytef*>(bytes.empty() ? &nothing : bytes.data());
        stream_.avail_out = static_cast<uInt>(bytes.size());
        return inflate(&stream_, Z_FINISH) == Z_STREAM_END && stream_.avail_out == 0 &&
               stream_.avail_in == 0;
    }

  private:
    z_stream stream_{};
    bool is_ready_;
};

std::uint32_t checksum_of(std::string_view bytes) noexcept {
    return static_cast<std::uint32_t>(crc32_z(
        crc32_z(0, nullptr, 0), reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace

std::string folded_name(std::string_view name) {
    std::string folded(name);
    for (char& character : folded)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return folded;
}

ZipReader::ZipReader(std::wstring file, std::string bytes)
    : file_(std::move(file)), bytes_(std::move(bytes)) {
    if (bytes_.empty()) fail(L"it is empty");
    if (bytes_.starts_with(compound_mark) && holds_encrypted_package(bytes_))
        fail(L"it is encrypted; save it without a password first");
    if (bytes_.starts_with(compound_mark))
        fail(L"it is a document of the old binary format; save it as .xlsx first");
    read_directory(find_directory());
    check_names();
    check_overlaps();
}

const ZipReader::Entry* ZipReader::find(std::string_view name) const {
    const std::string wanted = folded_name(name);
    const auto found = std::ranges::find_if(
        entries_, [&](const Entry& entry) { return folded_name(entry.name) == wanted; });
    return found == entries_.end() ? nullptr : &*found;
}

std::string ZipReader::read(const Entry& entry) const {
    std::string bytes = entry.method == zip::stored ? bytes_.substr(entry.data, entry.packed_size)
                                                    : inflated(entry);
    if (checksum_of(bytes) != entry.checksum)
        fail_entry(entry, L"is damaged: its checksum does not fit");
    return bytes;
}

std::string ZipReader::inflated(const Entry& entry) const {
    if (entry.size > greatest_size) fail_entry(entry, L"is larger than 1 GiB when it is unpacked");
    std::string bytes;
    const bool is_possible = entry.size <= entry.packed_size * greatest_ratio;
    if (is_possible) bytes.resize(entry.size);
    if (!is_possible || !Inflater().fill(bytes, {bytes_.data() + entry.data, entry.packed_size}))
        fail_entry(entry, L"is damaged, or not as large as the archive says");
    return bytes;
}

// The end record is the last thing in the file; only a comment may follow its fields.
ZipReader::Directory ZipReader::find_directory() const {
    if (bytes_.size() >= zip::end_size) {
        const std::size_t last = bytes_.size() - zip::end_size;
        const std::size_t first = last - std::min(last, zip::longest_comment);
        for (std::size_t position = last + 1; position-- > first;)
            if (long_at(position) == zip::end_signature &&
                short_at(position + zip::end_record::comment_length) == last - position)
                return directory_at(position);
    }
    if (bytes_.starts_with("PK")) fail(L"the file is not complete");
    fail(L"it is no zip package");
}

ZipReader::Directory ZipReader::directory_at(std::size_t end_record) const {
    namespace field = zip::end_record;
    const Directory directory{long_at(end_record + field::directory),
                              long_at(end_record + field::directory_size),
                              short_at(end_record + field::entries)};
    if (directory.start == zip::elsewhere || directory.size == zip::elsewhere ||
        directory.entries == zip::elsewhere_short)
        fail(L"it has the form of zip archives beyond 4 GiB, which is not read");
    if (short_at(end_record + field::disk) != 0 ||
        short_at(end_record + field::directory_disk) != 0 ||
        short_at(end_record + field::entries_here) != directory.entries)
        fail(L"it is one part of a zip archive of several files");
    if (directory.start > end_record || directory.size > end_record - directory.start)
        fail(L"its directory is not where the archive says");
    return directory;
}

void ZipReader::read_directory(const Directory& directory) {
    namespace field = zip::central;
    std::size_t position = directory.start;
    const std::size_t end = directory.start + directory.size;
    for (std::size_t i = 0; i < directory.entries; ++i) {
        if (end - position < zip::central_size || long_at(position) != zip::central_signature)
            fail(L"its directory is damaged");
        const std::size_t name_length = short_at(position + field::name_length);
        const std::size_t length = zip::central_size + name_length +
                                   short_at(position + field::extra_length) +
                                   short_at(position + field::comment_length);
        if (length > end - position) fail(L"its directory is damaged");
        entries_.push_back(read_entry(position, name_length));
        find_data(entries_.back(), directory.start);
        position += length;
    }
}

ZipReader::Entry ZipReader::read_entry(std::size_t header, std::size_t name_length) const {
    namespace field = zip::central;
    Entry entry{bytes_.substr(header + zip::central_size, name_length),
                short_at(header + field::method),
                long_at(header + field::checksum),
                long_at(header + field::packed_size),
                long_at(header + field::size),
                long_at(header + field::local_header),
                0};
    if (short_at(header + field::flags) & zip::flag_encrypted)
        fail_entry(entry, L"is encrypted; save the file without a password first");
    if (entry.method != zip::stored && entry.method != zip::deflated)
        fail_entry(entry, L"is packed by method " + std::to_wstring(entry.method) +
                              L"; stored and deflated entries are read");
    if (entry.packed_size == zip::elsewhere || entry.size == zip::elsewhere ||
        entry.header == zip::elsewhere)
        fail_entry(entry, L"has the form of zip archives beyond 4 GiB, which is not read");
    if (short_at(header + field::disk) != 0) fail_entry(entry, L"is in another file");
    if (entry.method == zip::stored && entry.packed_size != entry.size)
        fail_entry(entry, L"has two sizes");
    return entry;
}

// `limit` is where the directory begins, before which all data ends.
void ZipReader::find_data(Entry& entry, std::size_t limit) const {
    namespace field = zip::local;
    const std::size_t header = entry.header;
    if (header > limit || limit - header < zip::local_size ||
        long_at(header) != zip::local_signature)
        fail_entry(entry, L"is not where the archive says");
    const std::size_t name_length = short_at(header + field::name_length);
    entry.data = header + zip::local_size + name_length + short_at(header + field::extra_length);
    if (entry.data > limit || entry.packed_size > limit - entry.data)
        fail_entry(entry, L"reaches beyond its end");
    const bool has_sizes = !(short_at(header + field::flags) & zip::flag_sizes_follow);
    if (bytes_.compare(header + zip::local_size, name_length, entry.name) != 0 ||
        short_at(header + field::method) != entry.method ||
        (has_sizes && (long_at(header + field::checksum) != entry.checksum ||
                       long_at(header + field::packed_size) != entry.packed_size ||
                       long_at(header + field::size) != entry.size)))
        fail_entry(entry, L"is described in two different ways");
}

void ZipReader::check_names() const {
    std::set<std::string> names;
    for (const Entry& entry : entries_)
        if (!names.insert(folded_name(entry.name)).second) fail_entry(entry, L"is there twice");
}

// Entries that share their bytes make a small archive unpack to any size.
void ZipReader::check_overlaps() const {
    std::vector<const Entry*> in_order;
    for (const Entry& entry : entries_)
        in_order.push_back(&entry);
    std::ranges::sort(in_order, {}, &Entry::header);
    for (std::size_t i = 1; i < in_order.size(); ++i)
        if (in_order[i - 1]->data + in_order[i - 1]->packed_size > in_order[i]->header)
            fail_entry(*in_order[i], L"overlaps another entry");
}

std::uint16_t ZipReader::short_at(std::size_t position) const noexcept {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes_[i]); };
    return static_cast<std::uint16_t>(byte(position) | byte(position + 1) << 8);
}

std::uint32_t ZipReader::long_at(std::size_t position) const noexcept {
    return short_at(position) | static_cast<std::uint32_t>(short_at(position + 2)) << 16;
}

void ZipReader::fail(std::wstring_view problem) const {
    const bool has_advice = problem.find(L';') != problem.npos;
    throw Failure(L"\"" + file_ + L"\" cannot be read: " + std::wstring(problem) +
                  (has_advice ? L"" : L"; save it anew as .xlsx with a spreadsheet program"));
}

void ZipReader::fail_entry(const Entry& entry, std::wstring_view problem) const {
    fail(L"its entry \"" + shown(entry.name) + L"\" " + std::wstring(problem));
}

}  // namespace cli
