#include "cli/package/xml_events.h"

#include <utility>

#include "automation/call.h"
#include "automation/text_stream.h"
#include "automation/xml_reader.h"
#include "cli/failure.h"
#include "cli/package/character_references.h"

namespace cli {
namespace {

using automation::check;
using automation::ComPtr;

using NameGetter = HRESULT (STDMETHODCALLTYPE IXmlReader::*)(const wchar_t**, UINT*);

std::wstring_view current(IXmlReader& reader, NameGetter getter) {
    const wchar_t* text = nullptr;
    UINT length = 0;
    check((reader.*getter)(&text, &length));
    return {text, length};
}

std::wstring value_of(IXmlReader& reader) {
    std::wstring text(current(reader, &IXmlReader::GetValue));
    restore_white_space(text);
    return text;
}

class Reading {
  public:
    Reading(std::string text, XmlHandler& handler)
        : stream_(automation::make_text_stream(std::move(text))),
          reader_(automation::create_xml_reader()),
          handler_(handler) {
        check(reader_->SetInput(stream_.get()));
    }

    // False when the text is not well-formed.
    bool read() {
        XmlNodeType type{};
        HRESULT code;
        while ((code = reader_->Read(&type)) == S_OK)
            if (!has_moved(type) || !take(type)) return false;
        return SUCCEEDED(code) && has_root_ && depth_ == 0;
    }

  private:
    bool take(XmlNodeType type) {
        switch (type) {
            case XmlNodeType_Element:
                return begin_element();
            case XmlNodeType_EndElement:
                --depth_;
                handler_.end(current(*reader_, &IXmlReader::GetLocalName));
                return true;
            case XmlNodeType_Text:
            case XmlNodeType_Whitespace:
            case XmlNodeType_CDATA:
                if (depth_ > 0) handler_.text(value_of(*reader_));
                return true;
            default:
                return true;
        }
    }

    bool begin_element() {
        if (depth_ == 0 && std::exchange(has_root_, true)) return false;
        const bool is_empty = reader_->IsEmptyElement();
        const std::wstring name(current(*reader_, &IXmlReader::GetLocalName));
        handler_.start(name, XmlAttributes(*reader_));
        is_empty ? handler_.end(name) : void(++depth_);
        return true;
    }

    // Where a text ends too early, Wine's parser goes on for ever with the same node, or ends the
    // open elements itself, one by one, where they began.
    bool has_moved(XmlNodeType type) {
        std::pair<UINT, UINT> position;
        reader_->GetLineNumber(&position.first);
        reader_->GetLinePosition(&position.second);
        const bool stands = type == type_ && position == position_;
        const bool goes_back = type == XmlNodeType_EndElement && position <= position_;
        type_ = type;
        position_ = position;
        return !stands && !goes_back;
    }

    const ComPtr<ISequentialStream> stream_;
    const ComPtr<IXmlReader> reader_;
    XmlHandler& handler_;
    bool has_root_ = false;
    std::size_t depth_ = 0;
    XmlNodeType type_ = XmlNodeType_None;  // of the node that was read last
    std::pair<UINT, UINT> position_;       // its line and column
};

}  // namespace

std::optional<std::wstring> XmlAttributes::find(std::wstring_view name) const {
    std::optional<std::wstring> found;
    for (HRESULT code = reader_.MoveToFirstAttribute(); code == S_OK && !found;
         code = reader_.MoveToNextAttribute())
        if (current(reader_, &IXmlReader::GetLocalName) == name) found = value_of(reader_);
    reader_.MoveToElement();
    return found;
}

void read_xml(std::string_view bytes, XmlHandler& handler, const std::wstring& what) {
    if (!Reading(resolved_references(bytes), handler).read())
        throw Failure(what + L" is not well-formed XML; save the file anew");
}

}  // namespace cli
