#include "hostkit/script/message_box.h"

#include "automation/conversion.h"
#include "automation/object.h"
#include "hostkit/boundary.h"
#include "hostkit/services/service_state.h"

namespace hostkit {
namespace {

using automation::to_text;

constexpr wchar_t language_title[] = L"VBScript";

// How automation passes an optional argument that was left out.
bool is_missing(const VARIANT& argument) noexcept {
    return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

class ScriptMessageBox : public automation::Object<ScriptMessageBox, IHostKitMessageBox> {
  public:
    STDMETHODIMP MsgBox(VARIANT prompt, VARIANT buttons, VARIANT title, VARIANT, VARIANT,
                        long* result) override {
        return answer<Watched>(result, Given(prompt, buttons, title), [&] {
            return show_message(to_text(prompt).str(),
                                is_missing(buttons) ? MB_OK : automation::to_long(buttons),
                                is_missing(title) ? language_title : to_text(title).str());
        });
    }
};

}  // namespace

automation::ComPtr<IDispatch> make_message_box() {
    return automation::make<ScriptMessageBox>()->main_interface();
}

}  // namespace hostkit
