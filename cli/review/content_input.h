// What check, diff and preview read: a content document, or a workbook that carries one.
#pragma once

#include "cli/course.h"
#include "cli/records/content_records.h"

namespace cli {

// Of a workbook, what stands in its cells becomes the document values.
std::vector<ContentRecord> read_content_input(const std::wstring& path, Course& course);

}  // namespace cli
