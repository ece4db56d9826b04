// A text with translations, and small functions on texts.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hostkit {

// The base text stands for every language that has no text of its own. Languages are positions in
// the project file's list, from 0.
class LocalText {
  public:
    LocalText() = default;
    LocalText(std::wstring base) : base_(std::move(base)) {}

    const std::wstring& in(std::size_t language) const noexcept {
        const bool translated = language < translations_.size() && !translations_[language].empty();
        return translated ? translations_[language] : base_;
    }
    void set_base(std::wstring text) { base_ = std::move(text); }
    void translate(std::size_t language, std::wstring text) {
        if (translations_.size() <= language) translations_.resize(language + 1);
        translations_[language] = std::move(text);
    }
    // Replaces what `in` answers for the language.
    void replace(std::size_t language, std::wstring text);

    const std::wstring& base() const noexcept { return base_; }
    // Of the language's own; empty when it has none.
    std::wstring translation(std::size_t language) const {
        return language < translations_.size() ? translations_[language] : std::wstring();
    }

    bool empty() const noexcept { return base_.empty() && translations_.empty(); }

  private:
    std::wstring base_;
    std::vector<std::wstring> translations_;
};

std::wstring_view trimmed(std::wstring_view text) noexcept;
std::vector<std::wstring_view> split(std::wstring_view text, wchar_t separator);

// The number that a text is; false when it is none. Spelling as in the project file: a point for
// the decimals, whatever the user's locale.
bool read_number(std::wstring_view text, double& number);
bool read_number(std::wstring_view text, long& number);

// The text with every "{row}" replaced by the number.
std::wstring with_row(std::wstring_view text, long row);

}  // namespace hostkit
