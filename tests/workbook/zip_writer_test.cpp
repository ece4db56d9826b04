// Zip archives that are written are those that are read.

#include "cli/package/zip_writer.h"

#include <doctest/doctest.h>

#include "cli/package/zip_reader.h"

using namespace cli;

namespace {

struct Bytes : ByteSink {
    void write(std::string_view more) override { bytes += more; }
    std::string bytes;
};

std::string archive(const std::vector<std::string>& contents) {
    Bytes sink;
    ZipWriter zip(sink);
    for (std::size_t i = 0; i < contents.size(); ++i)
        zip.add("part" + std::to_string(i), [&](ByteSink& part) {
            // In pieces, as parts are written.
            const std::size_t half = contents[i].size() / 2;
            part.write(contents[i].substr(0, half));
            part.write(contents[i].substr(half));
        });
    zip.finish();
    return sink.bytes;
}

}  // namespace

TEST_CASE("what was written into an archive is read out of it") {
    std::string mixed;
    for (unsigned i = 0; i < 300000; ++i)
        mixed += static_cast<char>((i * 2654435761U) >> 24);
    const std::vector<std::string> contents = {"", "text", mixed, std::string(3000000, 'a')};
    const ZipReader reader(L"made.zip", archive(contents));
    REQUIRE(reader.entries().size() == contents.size());
    for (std::size_t i = 0; i < contents.size(); ++i)
        CHECK(reader.read(reader.entries()[i]) == contents[i]);
    CHECK(archive({}).size() == 22);
}
