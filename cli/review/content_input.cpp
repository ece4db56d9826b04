#include "cli/review/content_input.h"

#include "cli/records/content_reader.h"

namespace cli {

std::vector<ContentRecord> read_content_input(const std::wstring& path, Course& course) {
    course.phase(L"reading " + path);
    const dom::Document document = load_content_document(path);
    return read_contents(dom::root(document), [&](long number) { course.step(number, 0); })
        .contents;
}

}  // namespace cli
