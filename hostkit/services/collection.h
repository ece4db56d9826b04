// A live, read-only automation collection over a sequence of the thread's service state.
#pragma once

#include "automation/enumerator.h"
#include "automation/object.h"
#include "hostkit/boundary.h"
#include "hostkit/services/service_state.h"

namespace hostkit {

// Interface  the collection's interface, with Count, Item and _NewEnum
// Element    what Item hands out
// Sequence   the state's member that is shown
// Present    turns an entry of it into what Item returns
template <class Interface, class Element, auto Sequence, auto Present>
class Collection
    : public automation::Object<Collection<Interface, Element, Sequence, Present>, Interface> {
  public:
    STDMETHODIMP get_Count(long* result) override {
        return answer<Uncounted>(
            result, [] { return static_cast<long>((service_state().*Sequence).size()); });
    }
    STDMETHODIMP get_Item(long index, Element* result) override {
        return answer<Uncounted>(result, [&] {
            const auto* const entry = item_at(service_state().*Sequence, index);
            if (!entry) automation::fail(automation::error_subscript_out_of_range);
            return Present(*entry);
        });
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        return answer<Uncounted>(
            result, [] { return automation::make_enumerator(service_state().*Sequence, Present); });
    }
};

}  // namespace hostkit
