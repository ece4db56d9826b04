#include "hostkit/model/mapping_table.h"

#include <algorithm>

#include "automation/error.h"
#include "hostkit/model/texts.h"

namespace hostkit {

using automation::Variant;

void MappingTable::add(MappingBlock block) {
    count_ += block.repeat * static_cast<long>(block.rows.size());
    ends_.push_back(count_);
    blocks_.push_back(std::move(block));
}

MappingTable::Place MappingTable::at(long index) const {
    if (index < 1 || index > count_) automation::fail(automation::error_subscript_out_of_range);
    const auto end = std::lower_bound(ends_.begin(), ends_.end(), index);
    const auto position = static_cast<std::size_t>(end - ends_.begin());
    const MappingBlock& block = blocks_[position];
    const long offset = index - 1 - (position == 0 ? 0 : ends_[position - 1]);
    const auto size = static_cast<long>(block.rows.size());
    return {&block.rows[static_cast<std::size_t>(offset % size)], &block,
            block.first_number + offset / size};
}

std::wstring target_of(const MappingTable::Place& place) {
    return place.block->generated ? with_row(place.row->target, place.number) : place.row->target;
}

Variant value_of(const MappingTable::Place& place) {
    if (!place.block->generated || !place.row->value.is_string()) return place.row->value;
    return Variant(with_row(place.row->value.text(), place.number));
}

}  // namespace hostkit
