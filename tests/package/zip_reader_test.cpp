#include "cli/package/zip_reader.h"

#include <doctest/doctest.h>

#include <utility>

#include "cli/failure.h"
#include "cli/package/zip_format.h"
#include "package/zip_builder.h"

using namespace cli;
using namespace test;

namespace {

const std::string repeated(5000, 'x');

std::string sample_archive() {
    return zip_of({{"a.xml", repeated},
                   {"folder/b.bin", "stored", false},
                   {"c.xml", "follows", true, true},
                   {"empty", ""}});
}

// What is told of an archive when every entry of it is read; empty when all is well.
std::wstring problem_of(std::string archive) {
    try {
        const ZipReader reader(L"x.zip", std::move(archive));
        for (const ZipReader::Entry& entry : reader.entries())
            reader.read(entry);
        return {};
    } catch (const Failure& failure) {
        return failure.text();
    }
}

std::string narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

// One field of the sample archive, changed.
struct Fault {
    std::uint32_t record;
    int n;
    std::size_t field;
    std::uint32_t value;
    bool is_long;
    const char* problem;
};

}  // namespace

TEST_CASE("entries are found by name in any case, and unpacked") {
    const ZipReader reader(L"x.zip", sample_archive());
    REQUIRE(reader.entries().size() == 4);
    CHECK(reader.read(*reader.find("a.xml")) == repeated);
    CHECK(reader.read(*reader.find("Folder/B.BIN")) == "stored");
    CHECK(reader.read(*reader.find("c.xml")) == "follows");
    CHECK(reader.read(*reader.find("empty")).empty());
    CHECK(reader.find("b.bin") == nullptr);
    CHECK(problem_of(zip_of({})).empty());
}

TEST_CASE("a comment may follow the archive") {
    std::string archive = sample_archive();
    put_short(archive, record(archive, zip::end_signature) + zip::end_record::comment_length, 5);
    CHECK(problem_of(archive + "PK\5\6!").empty());
    CHECK(narrow(problem_of(archive + "four")).find("is not complete") != std::string::npos);
}

TEST_CASE("a field that lies is told") {
    using zip::central_signature, zip::local_signature, zip::end_signature;
    namespace central = zip::central;
    namespace local = zip::local;
    namespace end_record = zip::end_record;
    constexpr Fault faults[] = {
        {central_signature, 0, central::flags, zip::flag_encrypted, false,
         "\"a.xml\" is encrypted"},
        {central_signature, 0, central::method, 12, false, "packed by method 12"},
        {central_signature, 0, central::checksum, 1, true, "described in two different ways"},
        {central_signature, 2, central::checksum, 1, true, "its checksum does not fit"},
        {central_signature, 2, central::size, 8, true, "not as large as the archive says"},
        {central_signature, 2, central::size, 6, true, "not as large as the archive says"},
        {central_signature, 2, central::size, 0x30000000, true, "not as large"},
        {central_signature, 2, central::size, 0xF0000000, true, "larger than 1 GiB"},
        {central_signature, 2, central::size, zip::elsewhere, true, "beyond 4 GiB"},
        {central_signature, 2, central::packed_size, 3, true, "not as large"},
        {central_signature, 2, central::packed_size, 20, true, "overlaps another entry"},
        {central_signature, 2, central::packed_size, 0xFFFFFF, true, "reaches beyond its end"},
        {central_signature, 1, central::size, 5, true, "has two sizes"},
        {central_signature, 1, central::local_header, 0, true, "described in two different ways"},
        {central_signature, 1, central::local_header, 3, true, "is not where the archive says"},
        {central_signature, 1, central::local_header, 0xFFFFFFF0, true, "is not where"},
        {central_signature, 3, central::comment_length, 1, false, "directory is damaged"},
        {central_signature, 3, central::name_length, 0xFFFF, false, "directory is damaged"},
        {central_signature, 1, 0, 0, true, "directory is damaged"},
        {central_signature, 1, central::disk, 1, false, "is in another file"},
        {local_signature, 1, local::method, 8, false, "described in two different ways"},
        {local_signature, 1, local::extra_length, 0xFFFF, false, "reaches beyond its end"},
        {end_signature, 0, end_record::entries, 5, false, "of several files"},
        {end_signature, 0, end_record::disk, 1, false, "of several files"},
        {end_signature, 0, end_record::directory, 0xFFFFFF, true, "directory is not where"},
        {end_signature, 0, end_record::directory_size, 0xFFFFFF, true, "directory is not where"},
        {end_signature, 0, end_record::directory, zip::elsewhere, true, "beyond 4 GiB"},
    };
    for (const Fault& fault : faults) {
        std::string archive = sample_archive();
        const std::size_t position = record(archive, fault.record, fault.n) + fault.field;
        fault.is_long ? put_long(archive, position, fault.value)
                      : put_short(archive, position, fault.value);
        const std::string problem = narrow(problem_of(archive));
        CAPTURE(problem);
        CHECK_MESSAGE(problem.find(fault.problem) != std::string::npos, fault.problem);
        CHECK(problem.starts_with("\"x.zip\" cannot be read: "));
    }
}

TEST_CASE("what is no archive is told by what it is") {
    const std::string compound = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more";
    std::string encrypted = compound;
    for (const char character : std::string("EncryptedPackage"))
        encrypted.append({character, '\0'});
    const std::pair<std::string, const char*> files[] = {
        {"", "it is empty"},
        {"a;b;c\r\n1;2;3\r\n", "it is no zip package"},
        {"PK", "the file is not complete"},
        {encrypted, "it is encrypted; save it without a password first"},
        {compound, "the old binary format"},
        {zip_of({{"a", "1"}, {"A", "2"}}), "\"A\" is there twice"},
    };
    for (const auto& [bytes, problem] : files)
        CHECK(narrow(problem_of(bytes)).find(problem) != std::string::npos);
}

TEST_CASE("no single damage and no shortening passes for the contents, or does harm") {
    const std::string archive = sample_archive();
    for (std::size_t length = 0; length < archive.size(); ++length)
        CHECK_FALSE(problem_of(archive.substr(0, length)).empty());
    for (std::size_t i = 0; i < archive.size(); ++i)
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::string damaged = archive;
            damaged[i] = static_cast<char>(damaged[i] ^ change);
            if (!problem_of(damaged).empty()) continue;
            // Time stamps, names and versions mean nothing to the contents.
            const ZipReader reader(L"x.zip", damaged);
            for (const ZipReader::Entry& entry : reader.entries())
                if (entry.name == "a.xml") CHECK(reader.read(entry) == repeated);
        }
}
