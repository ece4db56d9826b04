// Project files that a test writes down itself.
#pragma once

#include <string>

#include "support/com_fixture.h"

namespace test {

// A file in the temporary folder, gone at the end of the test.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& path() const noexcept { return path_; }

  private:
    std::wstring path_;
};

// The text of a project file: catalogues that suit every test, then the given project and queries.
// The first line of `body` is line 3 of the file.
std::string project_text(const std::string& body, const std::string& queries = {});

// The project of a literal text, open for the test.
class LiteralProject : public ComFixture {
  public:
    explicit LiteralProject(const std::string& body, const std::string& queries = {});

    ComPtr<IKelosObject> object(const wchar_t* path) const;
    ComPtr<IKelosQuery> query(const wchar_t* name) const;

    ComPtr<IHostKit> kit;
    ComPtr<IKelosWorkset> workset;
};

// What a column definition delivered: its entries as "value=display", parted by ", ", or
// "nothing"; and the language and unit that it reported afterwards.
struct Evaluation {
    std::wstring entries = L"nothing";
    long presentation = 0;
    long lcid = 0;
    std::wstring unit;
};
Evaluation evaluate(const ComPtr<IKelosObject>& object, long constant,
                    const wchar_t* parameter = L"", long lcid = 0, const wchar_t* unit = L"");

// The description of the error that the call leaves; empty when it succeeds.
template <class Call>
std::wstring error_of(Call&& call) {
    try {
        call();
        return {};
    } catch (const automation::Error& error) {
        return error.description().str();
    }
}

}  // namespace test
