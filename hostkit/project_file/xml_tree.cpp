#include "hostkit/project_file/xml_tree.h"

#include <utility>

#include "automation/error.h"
#include "automation/file_handle.h"
#include "automation/text_stream.h"
#include "automation/xml_reader.h"
#include "hostkit/project_file/file_text.h"
#include "hostkit/project_file/white_space_references.h"

namespace hostkit::project_file {
namespace {

using automation::check;
using automation::ComPtr;

struct KnownProblem {
    XmlError code;
    const wchar_t* text;
};
constexpr KnownProblem known_problems[] = {
    {MX_E_INPUTEND, L"the file ends too early"},
    {WC_E_ELEMENTMATCH, L"an end tag does not match its start tag"},
    {WC_E_QUOTE, L"an attribute's value is not in quotation marks"},
    {WC_E_EQUAL, L"an attribute has no value"},
    {WC_E_LESSTHAN, L"there is a \"<\" where none may be"},
    {WC_E_UNIQUEATTRIBUTE, L"an attribute stands twice"},
    {WC_E_UNDECLAREDENTITY, L"there is an unknown entity"},
    {WC_E_DTDPROHIBITED, L"there is a document type declaration"},
    {WC_E_ROOTELEMENT, L"there is more than one root element"},
    {WC_E_NAMECHARACTER, L"a name, or what follows a \"&\", is not written correctly"},
    {WC_E_SYNTAX, L"a tag is not written correctly"},
};

[[noreturn]] void fail_malformed(const std::wstring& path, IXmlReader* reader, HRESULT code) {
    UINT line = 0;
    reader->GetLineNumber(&line);
    for (const KnownProblem& known : known_problems)
        if (static_cast<HRESULT>(known.code) == code) fail_in_file(path, line, known.text);
    wchar_t number[16];
    swprintf(number, 16, L"%08X", static_cast<unsigned>(code));
    fail_in_file(path, line, std::wstring(L"this is not well-formed XML (") + number + L")");
}

// Whoever walks the tree calls itself once per level: far deeper files would exhaust the stack.
constexpr std::size_t max_depth = 1000;

class TreeBuilder {
  public:
    TreeBuilder(const std::wstring& path, std::string text)
        : path_(path),
          stream_(automation::make_text_stream(std::move(text))),
          reader_(automation::create_xml_reader()) {
        check(reader_->SetInput(stream_.get()));
    }

    XmlElement build() {
        XmlNodeType type{};
        HRESULT code;
        while ((code = reader_->Read(&type)) == S_OK) {
            check_moved(type);
            take(type);
        }
        if (SUCCEEDED(code) && document_.children.empty())
            code = static_cast<HRESULT>(MX_E_INPUTEND);
        if (SUCCEEDED(code) && !open_.empty()) fail_unclosed();
        if (FAILED(code)) fail_malformed(path_, reader_.get(), code);
        return std::move(document_.children.front());
    }

  private:
    void take(XmlNodeType type) {
        switch (type) {
            case XmlNodeType_Element:
                return begin_element();
            case XmlNodeType_EndElement:
                return open_.pop_back();
            case XmlNodeType_Text:
            case XmlNodeType_Whitespace:
            case XmlNodeType_CDATA:
                return add_text();
            default:
                return;
        }
    }

    // Where a file ends too early, Wine's parser goes on for ever with the same node, or ends the
    // open elements itself, one by one, where they began.
    void check_moved(XmlNodeType type) {
        UINT column = 0;
        reader_->GetLinePosition(&column);
        const std::pair position(line(), column);
        const bool stands = type == type_ && position == position_;
        const bool goes_back = type == XmlNodeType_EndElement && position <= position_;
        type_ = type;
        position_ = position;
        if (!stands && !goes_back) return;
        if (!open_.empty()) fail_unclosed();
        fail_malformed(path_, reader_.get(), static_cast<HRESULT>(MX_E_INPUTEND));
    }

    [[noreturn]] void fail_unclosed() {
        fail_in_file(path_, open_.back()->line, L"<" + open_.back()->name + L"> has no end tag");
    }

    void begin_element() {
        if (open_.size() >= max_depth)
            fail_in_file(path_, line(),
                         L"elements stand more than " + std::to_wstring(max_depth) +
                             L" deep inside each other");
        const bool is_empty = reader_->IsEmptyElement();
        XmlElement element;
        element.name = name();
        element.line = line();
        element.number = count_++;
        read_attributes(element);
        XmlElement& parent = open_.empty() ? document_ : *open_.back();
        parent.children.push_back(std::move(element));
        // Pointers stay right: a parent gets no further child while a child of it is open.
        if (!is_empty) open_.push_back(&parent.children.back());
    }

    void read_attributes(XmlElement& element) {
        while (reader_->MoveToNextAttribute() == S_OK) {
            for (const XmlAttribute& other : element.attributes)
                if (other.name == name())
                    fail_malformed(path_, reader_.get(),
                                   static_cast<HRESULT>(WC_E_UNIQUEATTRIBUTE));
            element.attributes.push_back({name(), value()});
        }
        reader_->MoveToElement();
    }

    void add_text() {
        if (!open_.empty()) open_.back()->text += value();
    }

    std::wstring name() {
        const wchar_t* text = nullptr;
        UINT length = 0;
        check(reader_->GetQualifiedName(&text, &length));
        return std::wstring(text, length);
    }
    std::wstring value() {
        const wchar_t* text = nullptr;
        UINT length = 0;
        check(reader_->GetValue(&text, &length));
        return white_space_restored(std::wstring(text, length));
    }
    unsigned line() {
        UINT number = 0;
        reader_->GetLineNumber(&number);
        return number;
    }

    const std::wstring& path_;
    ComPtr<ISequentialStream> stream_;
    ComPtr<IXmlReader> reader_;
    XmlElement document_;
    std::vector<XmlElement*> open_;
    std::size_t count_ = 0;                // of start tags
    XmlNodeType type_ = XmlNodeType_None;  // of the node that was read last
    std::pair<UINT, UINT> position_;       // its line and column
};

}  // namespace

void fail_in_file(const std::wstring& path, unsigned line, std::wstring_view problem) {
    std::wstring text = path;
    if (line > 0) text += L", line " + std::to_wstring(line);
    automation::fail(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), text.append(L": ").append(problem));
}

std::string read_file(const std::wstring& path) {
    const automation::FileHandle file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.is_open())
        automation::fail(HRESULT_FROM_WIN32(GetLastError()),
                         L"The file \"" + path + L"\" cannot be opened");
    std::string bytes;
    char block[16384];
    DWORD got = 0;
    while (ReadFile(file.get(), block, sizeof block, &got, nullptr) && got > 0)
        bytes.append(block, got);
    return bytes;
}

XmlElement read_xml(const std::wstring& path, const std::string& bytes) {
    if (bytes.empty()) fail_in_file(path, 0, L"the file is empty");
    return TreeBuilder(path, hide_white_space_references(utf8_text(path, bytes))).build();
}

}  // namespace hostkit::project_file
