// A script runner of the component on the small project.
#pragma once

#include "support/content_text.h"
#include "support/watched_host.h"

namespace test {

class RunnerFixture : public WatchedProject {
  public:
    ComPtr<ITesseraVexScript> runner = create<ITesseraVexScript>(L"Tessera.VexScript");

    void use(const ComPtr<IKelosDocument>& chosen) {
        call(runner, &ITesseraVexScript::putref_WorkSet, workset.get());
        call(runner, &ITesseraVexScript::putref_Document, chosen.get());
    }
    dom::Document execute(const wchar_t* script) {
        return get(runner, &ITesseraVexScript::Execute, Bstr(script).get());
    }
    std::wstring stored(const ComPtr<IKelosDocument>& chosen, bool create = false) {
        return get(runner, &ITesseraVexScript::GetVexScript, chosen.get(),
                   create ? VARIANT_TRUE : VARIANT_FALSE)
            .str();
    }
    bool store(const ComPtr<IKelosDocument>& chosen, const wchar_t* script) {
        return get(runner, &ITesseraVexScript::SetVexScript, chosen.get(), Bstr(script).get()) !=
               VARIANT_FALSE;
    }
    ComPtr<IKelosAttribute> script_of(const ComPtr<IKelosObject>& keeper) {
        const auto attributes = get(keeper, &IKelosObject::get_Attributes);
        return get(attributes, &IKelosAttributes::get_Item, static_cast<VARIANT>(Variant(L"Vex")));
    }
    std::wstring marker_of(const ComPtr<IKelosAttribute>& attribute) {
        return get(attribute, &IKelosAttribute::get_Marker).str();
    }
    void use_text_box(const ComPtr<IDispatch>& control) {
        call(runner, &ITesseraVexScript::putref_EditControl, control.get());
    }
};

// The selected text of either kind of editor.
template <class Editor>
std::wstring selected(const ComPtr<Editor>& editor) {
    const std::wstring text = get(editor, &Editor::get_Text).str();
    const long start = get(editor, &Editor::get_SelStart);
    const long length = get(editor, &Editor::get_SelLength);
    return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
}

}  // namespace test
