#include "hostkit/services/records.h"

#include "hostkit/services/collection.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::make;

class Message : public automation::Object<Message, IHostKitMessage> {
  public:
    explicit Message(const MessageRecord& record) : record_(record) {}

    STDMETHODIMP get_Text(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(record_.text); });
    }
    STDMETHODIMP get_Style(long* result) override {
        return answer<Uncounted>(result, [&] { return record_.style; });
    }
    STDMETHODIMP get_Title(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(record_.title); });
    }
    STDMETHODIMP get_Answer(long* result) override {
        return answer<Uncounted>(result, [&] { return record_.answer; });
    }
    STDMETHODIMP get_Row(long* result) override {
        return answer<Uncounted>(result, [&] { return record_.row; });
    }

  private:
    const MessageRecord record_;
};

class ReportedError : public automation::Object<ReportedError, IHostKitError> {
  public:
    explicit ReportedError(const ErrorRecord& record) : record_(record) {}

    STDMETHODIMP get_Number(long* result) override {
        return answer<Uncounted>(result, [&] { return record_.number; });
    }
    STDMETHODIMP get_Description(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(record_.description); });
    }
    STDMETHODIMP get_Source(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(record_.source); });
    }
    STDMETHODIMP get_Label(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(record_.label); });
    }
    STDMETHODIMP get_Row(long* result) override {
        return answer<Uncounted>(result, [&] { return record_.row; });
    }

  private:
    const ErrorRecord record_;
};

ComPtr<IHostKitMessage> present_message(const MessageRecord& record) {
    return make<Message>(record)->main_pointer();
}
ComPtr<IHostKitError> present_error(const ErrorRecord& record) {
    return make<ReportedError>(record)->main_pointer();
}
Bstr present_trace(const std::wstring& text) {
    return Bstr(text);
}

using Messages =
    Collection<IHostKitMessages, IHostKitMessage*, &ServiceState::messages, present_message>;
using Errors = Collection<IHostKitErrors, IHostKitError*, &ServiceState::errors, present_error>;
using Traces = Collection<IHostKitTraces, BSTR, &ServiceState::traces, present_trace>;
using ScriptErrors = Collection<IHostKitScriptErrors, IKelosScriptError*,
                                &ServiceState::script_errors, make_script_error>;

}  // namespace

ComPtr<IHostKitMessages> recorded_messages() {
    return make<Messages>()->main_pointer();
}
ComPtr<IHostKitErrors> recorded_errors() {
    return make<Errors>()->main_pointer();
}
ComPtr<IHostKitTraces> recorded_traces() {
    return make<Traces>()->main_pointer();
}
ComPtr<IHostKitScriptErrors> recorded_script_errors() {
    return make<ScriptErrors>()->main_pointer();
}

}  // namespace hostkit
