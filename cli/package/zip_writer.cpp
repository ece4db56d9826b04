#include "cli/package/zip_writer.h"

#include <zlib.h>

#include <new>

#include "cli/failure.h"
#include "cli/package/zip_format.h"

namespace cli {
namespace {

// The first moment that the form knows, 1 January 1980: an archive that told when it was made would
// never be the same twice.
constexpr std::uint16_t time_of_entries = 0;
constexpr std::uint16_t date_of_entries = 0x0021;
// What reads deflated entries.
constexpr std::uint16_t version_needed = 20;

void append_short(std::string& bytes, std::uint16_t value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8);
}

void append_long(std::string& bytes, std::uint32_t value) {
    append_short(bytes, static_cast<std::uint16_t>(value & 0xFFFF));
    append_short(bytes, static_cast<std::uint16_t>(value >> 16));
}

// Numbers that do not fit stand for ones that are kept elsewhere.
std::uint32_t checked(std::uint64_t value) {
    if (value < zip::elsewhere) return static_cast<std::uint32_t>(value);
    throw Failure(L"what is to be written is too large: a package holds 4 GiB");
}

struct EntrySizes {
    std::uint32_t checksum;
    std::uint32_t packed;
    std::uint32_t plain;
    std::uint16_t name;
};

// What the local header and the one of the directory share.
void append_common(std::string& header, const EntrySizes& sizes) {
    append_short(header, version_needed);
    append_short(header, zip::flag_utf8);
    append_short(header, zip::deflated);
    append_short(header, time_of_entries);
    append_short(header, date_of_entries);
    append_long(header, sizes.checksum);
    append_long(header, sizes.packed);
    append_long(header, sizes.plain);
    append_short(header, sizes.name);
    append_short(header, 0);  // no extra field
}

std::string local_header(const EntrySizes& sizes) {
    std::string header;
    append_long(header, zip::local_signature);
    append_common(header, sizes);
    return header;
}

std::string central_header(const EntrySizes& sizes, std::uint32_t place) {
    std::string header;
    append_long(header, zip::central_signature);
    append_short(header, version_needed);  // made by
    append_common(header, sizes);
    append_short(header, 0);  // no comment
    append_short(header, 0);  // the first disk
    append_short(header, 0);  // internal attributes
    append_long(header, 0);   // external attributes
    append_long(header, place);
    return header;
}

}  // namespace

struct ZipWriter::Packer::Stream : z_stream {
    Stream() : z_stream{} {
        constexpr int without_header = -MAX_WBITS;
        constexpr int memory_level = 8;
        if (deflateInit2(this, Z_DEFAULT_COMPRESSION, Z_DEFLATED, without_header, memory_level,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Stream() { deflateEnd(this); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
};

ZipWriter::Packer::Packer() : stream_(std::make_unique<Stream>()) {}

ZipWriter::Packer::~Packer() = default;

void ZipWriter::Packer::write(std::string_view bytes) {
    constexpr std::size_t most_at_once = 1 << 20;
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, most_at_once);
        // zlib's interface takes what it only reads as if it could write there.
        stream_->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(part.data()));
        stream_->avail_in = static_cast<uInt>(part.size());
        checksum_ =
            static_cast<std::uint32_t>(crc32(checksum_, stream_->next_in, stream_->avail_in));
        size_ += part.size();
        run(Z_NO_FLUSH);
        bytes.remove_prefix(part.size());
    }
}

std::string_view ZipWriter::Packer::finish() {
    run(Z_FINISH);
    return packed_;
}

void ZipWriter::Packer::run(int flush) {
    char block[32768];
    do {
        stream_->next_out = reinterpret_cast<Bytef*>(block);
        stream_->avail_out = sizeof block;
        deflate(stream_.get(), flush);
        packed_.append(block, sizeof block - stream_->avail_out);
    } while (stream_->avail_out == 0);
}

void ZipWriter::write_entry(std::string_view name, Packer& packer) {
    const std::string_view packed = packer.finish();
    const EntrySizes sizes{packer.checksum(), checked(packed.size()), checked(packer.size()),
                           static_cast<std::uint16_t>(name.size())};
    directory_ += central_header(sizes, checked(written_));
    directory_ += name;
    ++entries_;
    write(local_header(sizes));
    write(name);
    write(packed);
}

void ZipWriter::finish() {
    if (entries_ >= zip::elsewhere_short)
        throw Failure(L"what is to be written has too many parts: a package holds 65534");
    std::string end;
    append_long(end, zip::end_signature);
    append_short(end, 0);  // this disk
    append_short(end, 0);  // the directory's disk
    append_short(end, static_cast<std::uint16_t>(entries_));
    append_short(end, static_cast<std::uint16_t>(entries_));
    append_long(end, checked(directory_.size()));
    append_long(end, checked(written_));
    append_short(end, 0);  // no comment
    write(directory_);
    write(end);
}

void ZipWriter::write(std::string_view bytes) {
    sink_.write(bytes);
    written_ += bytes.size();
}

}  // namespace cli
