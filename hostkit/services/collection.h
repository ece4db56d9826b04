// A live, read-only automation collection over a sequence of the thread's service state.
#pragma once

#include "automation/object.h"
#include "hostkit/boundary.h"
#include "hostkit/services/service_state.h"

namespace hostkit {

// The element with the given number, from 1; throws "subscript out of range".
template <class Sequence>
const typename Sequence::value_type& numbered(const Sequence& elements, long index) {
    if (index < 1 || static_cast<std::size_t>(index) > elements.size())
        automation::fail(automation::error_subscript_out_of_range);
    return elements[static_cast<std::size_t>(index) - 1];
}

// Interface  the collection's interface, with Count and Item
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
        return answer<Uncounted>(
            result, [&] { return Present(numbered(service_state().*Sequence, index)); });
    }
};

}  // namespace hostkit
