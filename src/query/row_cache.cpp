#include "query/row_cache.h"

namespace tessera {

using automation::Bstr;
using automation::ComPtr;

const ComPtr<IKelosCell>* RowCache::cell(std::int16_t column) const noexcept {
    const Entry* const entry = find(column);
    return entry && entry->has_cell ? &entry->cell : nullptr;
}

const Bstr* RowCache::text(std::int16_t column) const noexcept {
    const Entry* const entry = find(column);
    return entry && entry->has_text ? &entry->text : nullptr;
}

void RowCache::keep_cell(std::int16_t column, ComPtr<IKelosCell> cell) {
    if (column < 1) return;
    Entry& entry = used(column);
    entry.cell = std::move(cell);
    entry.has_cell = true;
}

void RowCache::keep_text(std::int16_t column, Bstr text) {
    if (column < 1) return;
    Entry& entry = used(column);
    entry.text = std::move(text);
    entry.has_text = true;
}

void RowCache::clear() noexcept {
    for (const std::size_t index : used_)
        entries_[index] = Entry();
    used_.clear();
}

const RowCache::Entry* RowCache::find(std::int16_t column) const noexcept {
    const auto index = static_cast<std::size_t>(column) - 1;
    return column >= 1 && index < entries_.size() ? &entries_[index] : nullptr;
}

RowCache::Entry& RowCache::used(std::int16_t column) {
    const auto index = static_cast<std::size_t>(column) - 1;
    if (index >= entries_.size()) entries_.resize(index + 1);
    Entry& entry = entries_[index];
    if (!entry.has_cell && !entry.has_text) used_.push_back(index);
    return entry;
}

}  // namespace tessera
