#include "package/zip_builder.h"

#include "cli/package/zip_format.h"

#include <zlib.h>

namespace test {
namespace {

namespace zip = cli::zip;

std::string deflated(const std::string& bytes) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string record_of(std::uint32_t signature, std::size_t size) {
    std::string bytes(size, '\0');
    put_long(bytes, 0, signature);
    return bytes;
}

// The fields from the checksum on stand in one order in both headers.
void put_sizes(std::string& header, std::size_t checksum, const ZipFile& file,
               const std::string& packed) {
    const auto bytes = reinterpret_cast<const Bytef*>(file.bytes.data());
    put_long(header, checksum, static_cast<std::uint32_t>(crc32_z(0, bytes, file.bytes.size())));
    put_long(header, checksum + 4, static_cast<std::uint32_t>(packed.size()));
    put_long(header, checksum + 8, static_cast<std::uint32_t>(file.bytes.size()));
}

}  // namespace

std::string zip_of(const std::vector<ZipFile>& files) {
    std::string archive;
    std::string directory;
    for (const ZipFile& file : files) {
        const std::string packed = file.is_deflated ? deflated(file.bytes) : file.bytes;
        const auto method = file.is_deflated ? zip::deflated : zip::stored;
        const auto flags = file.sizes_follow ? zip::flag_sizes_follow : std::uint16_t{0};
        const auto name_length = static_cast<std::uint32_t>(file.name.size());

        std::string central = record_of(zip::central_signature, zip::central_size);
        put_short(central, zip::central::flags, flags);
        put_short(central, zip::central::method, method);
        put_sizes(central, zip::central::checksum, file, packed);
        put_short(central, zip::central::name_length, name_length);
        put_long(central, zip::central::local_header, static_cast<std::uint32_t>(archive.size()));
        directory += central + file.name;

        std::string local = record_of(zip::local_signature, zip::local_size);
        put_short(local, zip::local::flags, flags);
        put_short(local, zip::local::method, method);
        if (!file.sizes_follow) put_sizes(local, zip::local::checksum, file, packed);
        put_short(local, zip::local::name_length, name_length);
        archive += local + file.name + packed;
    }
    std::string end = record_of(zip::end_signature, zip::end_size);
    put_short(end, zip::end_record::entries_here, static_cast<std::uint32_t>(files.size()));
    put_short(end, zip::end_record::entries, static_cast<std::uint32_t>(files.size()));
    put_long(end, zip::end_record::directory_size, static_cast<std::uint32_t>(directory.size()));
    put_long(end, zip::end_record::directory, static_cast<std::uint32_t>(archive.size()));
    return archive + directory + end;
}

std::size_t record(std::string_view archive, std::uint32_t signature, int n) {
    std::string mark(4, '\0');
    put_long(mark, 0, signature);
    std::size_t position = archive.find(mark);
    while (n-- > 0)
        position = archive.find(mark, position + 1);
    return position;
}

void put_short(std::string& archive, std::size_t position, std::uint32_t value) {
    archive[position] = static_cast<char>(value);
    archive[position + 1] = static_cast<char>(value >> 8);
}

void put_long(std::string& archive, std::size_t position, std::uint32_t value) {
    put_short(archive, position, value);
    put_short(archive, position + 2, value >> 16);
}

}  // namespace test
