#include "hostkit/objects/query_objects.h"

#include "automation/enumerator.h"
#include "automation/object.h"
#include "hostkit/objects/objects.h"

namespace hostkit {
namespace {

using automation::ComPtr;
using automation::Extends;
using automation::Object;

class ValueEntry : public Object<ValueEntry, Extends<IHostKitValueEntry, IKelosValueEntry>> {
  public:
    explicit ValueEntry(std::shared_ptr<const PropertyValue> entry) : entry_(std::move(entry)) {}

    STDMETHODIMP get_Value(VARIANT* result) override {
        return answer(result, [&] { return entry_->value; });
    }
    STDMETHODIMP get_DisplayValue(VARIANT* result) override {
        return answer(result, [&] { return entry_->display; });
    }

  private:
    std::shared_ptr<const PropertyValue> entry_;
};

class ValueListObject
    : public Object<ValueListObject, Extends<IHostKitValueList, IKelosValueList>> {
  public:
    explicit ValueListObject(PropertyValues values)
        : values_(std::make_shared<const PropertyValues>(std::move(values))) {}

    STDMETHODIMP get_Count(long* result) override {
        return answer(result, [&] { return static_cast<long>(values_->entries.size()); });
    }
    STDMETHODIMP get_Item(long index, IKelosValueEntry** result) override {
        return answer(result, Given(index), [&]() -> ComPtr<IKelosValueEntry> {
            const PropertyValue* const entry = item_at(values_->entries, index);
            return entry ? present(*entry) : nullptr;
        });
    }
    STDMETHODIMP get_Presentation(KelosPresentation* result) override {
        return answer(result,
                      [&] { return static_cast<KelosPresentation>(values_->presentation); });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(result, [&] {
            return automation::make_enumerator(
                values_->entries, [&](const PropertyValue& entry) { return present(entry); });
        });
    }

  private:
    ComPtr<IKelosValueEntry> present(const PropertyValue& entry) const {
        return automation::make<ValueEntry>(std::shared_ptr<const PropertyValue>(values_, &entry))
            ->main_pointer();
    }

    std::shared_ptr<const PropertyValues> values_;
};

}  // namespace

ComPtr<IKelosValueList> make_value_list(PropertyValues values) {
    return automation::make<ValueListObject>(std::move(values))->main_pointer();
}

}  // namespace hostkit
