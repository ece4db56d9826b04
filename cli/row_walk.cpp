#include "cli/row_walk.h"

#include "automation/call.h"

namespace cli {

using automation::call;
using automation::get;

RowWalk::RowWalk(const automation::ComPtr<ITesseraHQuery>& cursor, Course& course,
                 ErrorCounter errors, long total)
    : cursor_(cursor), course_(course), errors_(std::move(errors)), total_(total) {}

bool RowWalk::is_on_row() {
    if (is_broken_off_ || get(cursor_, &ITesseraHQuery::get_EOF) != VARIANT_FALSE) return false;
    course_.row(number_, total_);
    is_broken_off_ =
        course_.is_stopped() || get(cursor_, &ITesseraHQuery::get_State) == uccStateAbort;
    return !is_broken_off_;
}

// A cursor that could not move stands where it stood: going on would never end.
void RowWalk::move_on() {
    const std::size_t errors = errors_.count();
    call(cursor_, &ITesseraHQuery::MoveNext);
    is_broken_off_ = errors_.count() != errors;
    ++number_;
}

}  // namespace cli
