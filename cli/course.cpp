#include "cli/course.h"

#include <algorithm>

#include "automation/dispatch.h"
#include "automation/object.h"
#include "cli/failure.h"
#include "cli/interrupt.h"
#include "cli/progress_text.h"
#include "cli/text.h"

namespace cli {

using automation::Bstr;
using automation::call;
using automation::ComPtr;
using automation::get;

namespace {

constexpr std::uint64_t milliseconds_between_updates = 100;
// A run that still calls after so many refusals does not notice them: a script that goes on after
// errors, or whose rows the component reports and passes over.
constexpr int most_refused = 1000;

ConsoleStream* terminal_of(Console& console, bool data_on_output) {
    if (console.error.is_terminal()) return &console.error;
    if (console.out.is_terminal() && !data_on_output) return &console.out;
    return nullptr;
}

class Watcher : public automation::Object<Watcher, IHostKitWatcher> {
  public:
    Watcher(Course& course, std::function<void()> end) : course_(course), end_(std::move(end)) {}

    STDMETHODIMP Called(long row, long row_count) override {
        try {
            course_.row(row, row_count);
            if (!course_.refuses_call()) return S_OK;
            if (const auto end = std::exchange(end_, nullptr)) end();
            if (++refused_ == most_refused) course_.abandon();
            return E_ABORT;
        } catch (...) {
            return automation::current_error().code;
        }
    }

  private:
    Course& course_;
    std::function<void()> end_;
    int refused_ = 0;
};

}  // namespace

Course::Course(Console& console, const Arguments& arguments, bool data_on_output)
    : console_(console),
      stream_(arguments.quiet ? nullptr : terminal_of(console, data_on_output)) {}

Course::~Course() {
    try {
        close();
    } catch (...) {
        // The terminal or the form is gone; there is nothing left to take back.
    }
}

void Course::open_form(const std::wstring& caption) {
    form_ = automation::create_object<ITesseraProgress>(L"Tessera.Progress");
    call(form_, &ITesseraProgress::put_Caption, Bstr(caption).get());
    call(form_, &ITesseraProgress::put_Where, uccKelosToBox);
    call(form_, &ITesseraProgress::put_Percentage, short{0});
}

void Course::close() {
    if (const auto form = std::exchange(form_, nullptr))
        call(form, &ITesseraProgress::put_Percentage, short{100});
    if (shown_width_ > 0) stream_->write(L"\r" + std::wstring(shown_width_, L' ') + L"\r");
    shown_width_ = 0;
    shown_.clear();
}

void Course::phase(const std::wstring& text) {
    phase_ = text;
    next_update_ = 0;
    row(0, 0);
}

void Course::row(long number, long count) {
    if (!stream_ && !form_) return;
    const std::uint64_t now = GetTickCount64();
    if (now < next_update_) return;
    next_update_ = now + milliseconds_between_updates;
    show_line(told(number, count, now));
    move_bar(number, count);
}

// Rows that are counted from the start again are other rows; what came before the first one is no
// time of theirs.
std::wstring Course::told(long number, long count, std::uint64_t now) {
    if (last_row_ == 0 || number < last_row_) {
        first_row_ = number;
        first_row_at_ = now;
    }
    last_row_ = number;
    const std::wstring rows =
        progress_text({number, count, number - first_row_, now - first_row_at_});
    return rows.empty() ? phase_ : phase_ + L": " + rows;
}

void Course::step(long number, long count) {
    row(number, count);
    if (is_stopped()) throw Stopped();
}

bool Course::is_stopped() {
    if (is_interrupted()) is_stopped_ = true;
    return is_stopped_;
}

bool Course::refuses_call() {
    has_refused_ = has_refused_ || is_stopped();
    return has_refused_;
}

// What was begun goes with the process: unfinished files vanish.
void Course::abandon() {
    close();
    console_.error.write_line(L"tessera: stopped; nothing was written");
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exit_with_errors));
}

void Course::show_line(const std::wstring& text) {
    if (!stream_ || text == shown_) return;
    const std::u16string line = cut_to(visible(automation::as_u16(text)), stream_->width());
    const std::size_t width = display_width(line);
    const std::size_t rest = shown_width_ > width ? shown_width_ - width : 0;
    stream_->write(u"\r" + line + std::u16string(rest, u' '));
    shown_ = text;
    shown_width_ = width;
}

void Course::move_bar(long number, long count) {
    if (!form_) return;
    if (count > 0) {
        const auto percentage = static_cast<long>(100.0 * number / count);
        call(form_, &ITesseraProgress::put_Percentage,
             static_cast<short>(std::clamp(percentage, 0L, 99L)));
    }
    if (get(form_, &ITesseraProgress::get_State) == uccStateAbort) is_stopped_ = true;
}

CourseWatch::CourseWatch(const ComPtr<IHostKit>& kit, Course& course, std::function<void()> end)
    : kit_(kit) {
    call(kit_, &IHostKit::putref_Watcher,
         automation::make<Watcher>(course, std::move(end))->main_interface());
}

CourseWatch::~CourseWatch() {
    kit_->putref_Watcher(nullptr);
}

}  // namespace cli
