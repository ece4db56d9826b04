#include "automation/enumerator.h"

#include <algorithm>
#include <memory>

#include "automation/error.h"
#include "automation/plain_object.h"

namespace automation {
namespace {

using Items = std::shared_ptr<const std::vector<Variant>>;

class Enumerator : public PlainObject<IEnumVARIANT> {
  public:
    Enumerator(Items items, std::size_t position) : items_(std::move(items)), position_(position) {}

    // All that were asked for and are left, or none when one of them cannot be copied.
    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!items || (!fetched && count != 1)) return E_POINTER;
        const auto given = static_cast<ULONG>(std::min<std::size_t>(count, left()));
        for (ULONG i = 0; i < given; ++i) {
            VariantInit(&items[i]);
            // The platform copies from variants that it does not declare constant.
            auto& item = const_cast<Variant&>((*items_)[position_ + i]);
            const HRESULT code = VariantCopy(&items[i], &item);
            if (SUCCEEDED(code)) continue;
            std::for_each(items, items + i, [](VARIANT& copied) { VariantClear(&copied); });
            return code;
        }
        position_ += given;
        if (fetched) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const std::size_t skipped = std::min<std::size_t>(count, left());
        position_ += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        position_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        try {
            *result = make_plain<Enumerator>(items_, position_).detach();
            return S_OK;
        } catch (...) {
            return current_error().code;
        }
    }

  private:
    std::size_t left() const noexcept { return items_->size() - position_; }

    Items items_;
    std::size_t position_;
};

}  // namespace

ComPtr<IUnknown> make_enumerator(std::vector<Variant> items) {
    return make_plain<Enumerator>(std::make_shared<const std::vector<Variant>>(std::move(items)),
                                  std::size_t{0});
}

}  // namespace automation
