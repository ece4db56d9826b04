// Kelos.HostKit: opens project files.
#include "automation/object.h"
#include "automation/text.h"
#include "hostkit.h"
#include "hostkit/classes.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/objects/objects.h"
#include "hostkit/objects/query_objects.h"
#include "hostkit/project_file/loader.h"
#include "hostkit/project_file/save.h"
#include "hostkit/query/property_writing.h"
#include "hostkit/services/application.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Object;
using automation::view_of;

// Leads to the file when the current folder is another one.
std::wstring full_path(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return length > 0 && length < full.size() ? full.substr(0, length) : path;
}

class Kit : public Object<Kit, IHostKit> {
  public:
    ~Kit() {
        close();
        if (watcher_) watch_calls(nullptr);
    }

    STDMETHODIMP Open(BSTR path, IKelosWorkset** result) override {
        return answer<Uncounted>(result, [&] { return open(std::wstring(view_of(path))); });
    }
    STDMETHODIMP Close() override {
        return run<Uncounted>([&] { close(); });
    }
    STDMETHODIMP get_WorkSet(IKelosWorkset** result) override {
        return answer<Uncounted>(result, [&] { return workset_; });
    }
    STDMETHODIMP get_Documents(IKelosObjects** result) override {
        return answer<Uncounted>(result, [&] { return make_objects(model(), documents()); });
    }
    STDMETHODIMP get_Document(BSTR name, IKelosDocument** result) override {
        return answer<Uncounted>(result, [&] {
            return make_document(
                std::static_pointer_cast<Document>(kept(model(), document_named(view_of(name)))));
        });
    }
    STDMETHODIMP get_Object(BSTR path, IKelosObject** result) override {
        return answer<Uncounted>(result, [&] {
            return make_object(kept(model(), find_anywhere(*model(), view_of(path))));
        });
    }
    STDMETHODIMP get_QueryCount(long* result) override {
        return answer<Uncounted>(result,
                                 [&] { return static_cast<long>(model()->queries.size()); });
    }
    STDMETHODIMP get_QueryName(long index, BSTR* result) override {
        return answer<Uncounted>(result, [&] {
            const auto* const query = item_at(model()->queries, index);
            if (!query) automation::fail(automation::error_subscript_out_of_range);
            return Bstr((*query)->name);
        });
    }
    STDMETHODIMP get_Query(BSTR name, IKelosQuery** result) override {
        return answer<Uncounted>(result, [&]() -> ComPtr<IKelosQuery> {
            for (const auto& query : model()->queries)
                if (automation::equal_ignoring_case(query->name, view_of(name)))
                    return make_query(model(), *query);
            return {};
        });
    }
    STDMETHODIMP FailCall(long number, long code) override {
        return run<Uncounted>([&] { fail_call(number, code); });
    }
    STDMETHODIMP get_CountedCalls(long* result) override {
        return answer<Uncounted>(result, [] { return counted_calls(); });
    }
    STDMETHODIMP putref_Watcher(IHostKitWatcher* watcher) override {
        return run<Uncounted>([&] {
            watcher_ = watcher;
            watch_calls(watcher);
        });
    }
    STDMETHODIMP get_LogsCalls(VARIANT_BOOL* result) override {
        return answer<Uncounted>(result, [&] { return as_variant_bool(calls_.is_logging()); });
    }
    STDMETHODIMP put_LogsCalls(VARIANT_BOOL value) override {
        return run<Uncounted>([&] { calls_.log(value != VARIANT_FALSE); });
    }
    STDMETHODIMP TakeCalls(BSTR* result) override {
        return answer<Uncounted>(result, [&] { return Bstr(calls_.take_lines()); });
    }
    STDMETHODIMP FailCallNamed(BSTR name, long occurrence, long code) override {
        return run<Uncounted>([&] { calls_.fail(view_of(name), occurrence, code); });
    }
    STDMETHODIMP WriteProperty(IKelosObject* object, long constant, BSTR parameter, BSTR unit,
                               long lcid, VARIANT value) override {
        return run<Uncounted>([&] {
            const ElementRef element = element_behind(object);
            if (!element) automation::fail(E_INVALIDARG, L"This is no object of the kit");
            ColumnSettings settings;
            settings.constant = constant;
            settings.parameter = view_of(parameter);
            settings.unit = view_of(unit);
            settings.lcid = lcid;
            write_property(*element, settings, value);
        });
    }
    STDMETHODIMP Save(BSTR backup_path) override {
        return run<Uncounted>(
            [&] { project_file::save(*model(), std::wstring(view_of(backup_path))); });
    }

  private:
    const ModelRef& model() const {
        if (!model_) automation::fail(E_UNEXPECTED, L"No project file is open");
        return model_;
    }

    ComPtr<IKelosWorkset> open(const std::wstring& path) {
        ModelRef loaded = project_file::load(path);
        loaded->source.path = full_path(path);
        loaded->undo_state = make_undo_state(L"Step 2");
        loaded->outer_undo_state = make_undo_state(L"Step 1");
        close();
        workset_ = make_workset(loaded);
        model_ = std::move(loaded);
        set_current_workset(workset_);
        return workset_;
    }

    void close() {
        // Another kit may have opened a file meanwhile: its workset stays the current one.
        if (workset_ && current_workset() == workset_) set_current_workset({});
        workset_.reset();
        model_.reset();
    }

    std::vector<Element*> documents() const {
        std::vector<Element*> found;
        for (const auto& project : model()->projects)
            walk_below(*project, [&](Element& element) {
                if (element.kind == ElementKind::document) found.push_back(&element);
            });
        return found;
    }

    Element* document_named(std::wstring_view name) const {
        for (Element* const document : documents())
            if (automation::equal_ignoring_case(document->name, name)) return document;
        Element* const found = find_anywhere(*model(), name);
        return found && found->kind == ElementKind::document ? found : nullptr;
    }

    ModelRef model_;
    ComPtr<IKelosWorkset> workset_;
    ComPtr<IHostKitWatcher> watcher_;
    CallWatch calls_;
};

}  // namespace

ComPtr<IUnknown> create_host_kit() {
    return automation::make<Kit>()->main_interface();
}

}  // namespace hostkit
