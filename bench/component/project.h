// The project that the benchmarks work on, open in the host kit.
#pragma once

#include <functional>
#include <string>

#include "automation/call.h"
#include "automation/dispatch.h"
#include "hostkit.h"
#include "tessera.h"

namespace bench {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;
using automation::Variant;

template <class Interface>
ComPtr<Interface> create(const wchar_t* program_name) {
    return automation::create_object<Interface>(program_name);
}

// A file in the temporary folder, as long as this object lives.
class ScratchFile {
  public:
    explicit ScratchFile(const std::string& bytes = {});
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    const std::wstring& path() const noexcept { return path_; }

  private:
    std::wstring path_;
};

// The text of a project file: a pump, a document "Liste" whose mapping table has so many rows (a
// property and a fixed value take turns), and the queries "Q10" and "Q2" of so many rows with 10
// and 2 columns.
std::string project_text(int mapping_rows, int query_rows);

class Project {
  public:
    explicit Project(int mapping_rows = 2, int query_rows = 0);

    ComPtr<IKelosObject> pump() const;
    ComPtr<IKelosDocument> list() const;
    ComPtr<IKelosQuery> query(const wchar_t* name) const;
    ComPtr<IKelosMappingTable> mapping_table() const;
    // The calls that the kit gets while the work is done, one a line, without those of its service.
    std::wstring calls_of(const std::function<void()>& work) const;

    ComPtr<IHostKit> kit;
    ComPtr<IKelosWorkset> workset;
};

// The content document that the script text makes of the project's list.
ComPtr<IXMLDOMDocument> execute(const Project& project, const std::wstring& script);

}  // namespace bench
