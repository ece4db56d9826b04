#include "automation/enumerator.h"
#include "automation/object.h"
#include "hostkit/model/model_functions.h"
#include "hostkit/objects/objects.h"

namespace hostkit {
namespace {

using automation::Bstr;
using automation::ComPtr;
using automation::Extends;
using automation::Object;
using automation::view_of;

class UndoState : public Object<UndoState, IHostKitUndoState> {
  public:
    explicit UndoState(const wchar_t* name) : name_(name) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(name_); });
    }

  private:
    std::wstring name_;
};

class LanguageObject
    : public Object<LanguageObject, Extends<IHostKitProjectLanguage, IKelosLanguage>> {
  public:
    explicit LanguageObject(std::shared_ptr<const Language> language)
        : language_(std::move(language)) {}

    STDMETHODIMP get_Name(BSTR* result) override {
        return answer(result, [&] { return Bstr(language_->name); });
    }
    STDMETHODIMP get_LCID(long* result) override {
        return answer(result, [&] { return language_->lcid; });
    }

  private:
    std::shared_ptr<const Language> language_;
};

class LanguageList : public Object<LanguageList, Extends<IHostKitLanguages, IKelosLanguages>> {
  public:
    explicit LanguageList(ModelRef model) : model_(std::move(model)) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(model_->languages.size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosLanguage** result) override {
        return answer(result, Given(index), [&]() -> ComPtr<IKelosLanguage> {
            if (!item_at(model_->languages, index)) return {};
            return make_language(model_, static_cast<std::size_t>(index) - 1);
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(model_->languages, [&](const auto& language) {
                return make_language(
                    model_, static_cast<std::size_t>(&language - model_->languages.data()));
            });
        });
    }

  private:
    ModelRef model_;
};

class UserObject : public Object<UserObject, Extends<IHostKitUser, IKelosUser>> {
  public:
    explicit UserObject(std::shared_ptr<const User> user) : user_(std::move(user)) {}

    STDMETHODIMP get_Login(BSTR* result) override {
        return answer(result, [&] { return Bstr(user_->login); });
    }

  private:
    std::shared_ptr<const User> user_;
};

class WorksetObject : public Object<WorksetObject, Extends<IHostKitWorkset, IKelosWorkset>> {
  public:
    static constexpr GUID private_id = {
        0xc81f5e20, 0x3a6d, 0x4b97, {0xa0, 0xe4, 0x62, 0xd9, 0x7b, 0x1c, 0x51, 0xf1}};

    explicit WorksetObject(ModelRef model) : model_(std::move(model)) {}

    const ModelRef& model() const noexcept { return model_; }

    STDMETHODIMP get_CurrentProject(IKelosProject** result) override {
        return answer(result, [&] { return make_project(kept(model_, model_->project)); });
    }
    STDMETHODIMP get_CurrentUser(IKelosUser** result) override {
        return answer(result, [&]() -> ComPtr<IKelosUser> {
            const std::shared_ptr<const User> user(model_, &current_user());
            return automation::make<UserObject>(user)->main_pointer();
        });
    }
    STDMETHODIMP LoadObject(long system_type, BSTR uid, IKelosObject** result) override {
        return answer(result, Given(system_type, uid), [&] {
            return make_object(kept(model_, find_by_identity(*model_, system_type, view_of(uid))));
        });
    }
    STDMETHODIMP get_CurrentLCID(long* result) override {
        return answer(result, [&] { return model_->lcid; });
    }
    STDMETHODIMP get_CurrentUndoState(IDispatch** result) override {
        return answer(result, [&] { return model_->undo_state; });
    }
    STDMETHODIMP putref_CurrentUndoState(IDispatch* state) override {
        return run(Given(state), [&] { model_->undo_state = state; });
    }
    STDMETHODIMP get_OuterUndoState(IDispatch** result) override {
        return answer(result, [&] { return model_->outer_undo_state; });
    }
    STDMETHODIMP putref_OuterUndoState(IDispatch* state) override {
        return run(Given(state), [&] { model_->outer_undo_state = state; });
    }
    STDMETHODIMP get_Projects(IKelosObjects** result) override {
        return answer(result, [&] {
            std::vector<Element*> projects;
            for (const auto& project : model_->projects)
                projects.push_back(project.get());
            return make_objects(model_, std::move(projects));
        });
    }
    STDMETHODIMP get_CurrentLogin(BSTR* result) override {
        return answer(result, [&] { return Bstr(current_user().login); });
    }
    STDMETHODIMP put_CurrentLogin(BSTR login) override {
        return run(Given(login), [&] { model_->user = user_named(view_of(login)); });
    }

  private:
    const User& current_user() const noexcept { return model_->users[model_->user]; }

    std::size_t user_named(std::wstring_view login) const {
        for (std::size_t i = 0; i < model_->users.size(); ++i)
            if (model_->users[i].login == login) return i;
        automation::fail(E_INVALIDARG,
                         std::wstring(L"There is no user \"").append(login).append(L"\""));
    }

    ModelRef model_;
};

}  // namespace

ComPtr<IDispatch> make_undo_state(const wchar_t* name) {
    return automation::make<UndoState>(name)->main_pointer();
}

ComPtr<IKelosLanguage> make_language(const ModelRef& model, std::size_t position) {
    const std::shared_ptr<const Language> language(model, &model->languages[position]);
    return automation::make<LanguageObject>(language)->main_pointer();
}

ComPtr<IKelosLanguages> make_languages(const ModelRef& model) {
    return automation::make<LanguageList>(model)->main_pointer();
}

ComPtr<IKelosWorkset> make_workset(const ModelRef& model) {
    return automation::make<WorksetObject>(model)->main_pointer();
}

ModelRef model_behind(IKelosWorkset* workset) {
    const auto own = automation::own_object<WorksetObject>(workset);
    return own ? own->model() : nullptr;
}

}  // namespace hostkit
