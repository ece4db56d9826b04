#include "hostkit/services/script_error.h"

#include "automation/object.h"
#include "hostkit/boundary.h"
#include "services.h"

namespace hostkit {
namespace {

using automation::Bstr;

class ScriptError
    : public automation::Object<ScriptError,
                                automation::Extends<IHostKitScriptError, IKelosScriptError>> {
  public:
    explicit ScriptError(const ScriptErrorRecord& record) : record_(record) {}

    STDMETHODIMP get_Description(BSTR* result) override {
        return answer<Watched>(result, [&] { return Bstr(record_.description); });
    }
    STDMETHODIMP get_Item(BSTR* result) override {
        return answer<Watched>(result, [&] { return Bstr(record_.item); });
    }
    STDMETHODIMP get_Source(BSTR* result) override {
        return answer<Watched>(result, [&] { return Bstr(record_.source); });
    }
    STDMETHODIMP get_LineNr(long* result) override {
        return answer<Watched>(result, [&] { return record_.line; });
    }
    STDMETHODIMP get_LineText(BSTR* result) override {
        return answer<Watched>(result, [&] { return Bstr(record_.line_text); });
    }

  private:
    const ScriptErrorRecord record_;
};

}  // namespace

automation::ComPtr<IKelosScriptError> make_script_error(const ScriptErrorRecord& record) {
    return automation::make<ScriptError>(record)->main_pointer();
}

}  // namespace hostkit
