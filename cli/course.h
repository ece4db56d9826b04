// The course of a command that takes its time: shown to the user, who may end it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "automation/com_ptr.h"
#include "cli/arguments.h"
#include "cli/console.h"
#include "hostkit.h"
#include "tessera.h"

namespace cli {

// Shows a line on the terminal that is written over again and again, where there is a terminal and
// nothing else is told there; with a form, its bar. Ends the run on Ctrl-C or the form's button.
class Course {
  public:
    // `data_on_output`: standard output belongs to the result.
    Course(Console& console, const Arguments& arguments, bool data_on_output);
    ~Course();
    Course(const Course&) = delete;
    Course& operator=(const Course&) = delete;

    // Opens the component's own progress form.
    void open_form(const std::wstring& caption);
    void close();

    void phase(const std::wstring& text);
    // Shown a few times a second only.
    void row(long number, long count);
    // The same for work of the program's own, which can end anywhere: throws Stopped when the user
    // wants it to.
    void step(long number, long count);
    bool is_stopped();
    // Asked by the host before a call: true when it shall fail. What the run made is incomplete
    // then.
    bool refuses_call();
    bool has_refused() const noexcept { return has_refused_; }
    // Ends the program from inside a run that does not end by itself.
    void abandon();

  private:
    std::wstring told(long number, long count, std::uint64_t now);
    void show_line(const std::wstring& text);
    void move_bar(long number, long count);

    Console& console_;
    ConsoleStream* stream_ = nullptr;
    std::wstring phase_;
    std::wstring shown_;
    std::size_t shown_width_ = 0;
    std::uint64_t next_update_ = 0;
    // Where the rows that the rate is told of began.
    long first_row_ = 0;
    long last_row_ = 0;
    std::uint64_t first_row_at_ = 0;
    automation::ComPtr<ITesseraProgress> form_;
    bool is_stopped_ = false;
    bool has_refused_ = false;
};

// Follows a run from inside the host for as long as it lives: rows are shown, and once the run is
// stopped every call of the host fails.
class CourseWatch {
  public:
    // `end`, if any, is called before the first call that fails: it may end a run that would go on
    // calling.
    CourseWatch(const automation::ComPtr<IHostKit>& kit, Course& course,
                std::function<void()> end = {});
    ~CourseWatch();
    CourseWatch(const CourseWatch&) = delete;
    CourseWatch& operator=(const CourseWatch&) = delete;

  private:
    automation::ComPtr<IHostKit> kit_;
};

}  // namespace cli
