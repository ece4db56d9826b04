// tessera.exe: exports and queries of project files on the console.

#include <exception>

#include "automation/error.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/interrupt.h"

namespace cli {
namespace {

// COM for the life of the program.
class Apartment {
  public:
    Apartment() { automation::check(OleInitialize(nullptr)); }
    ~Apartment() { OleUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

int with_com(int (*command)(const Arguments&, Console&), const Arguments& arguments,
             Console& console) {
    const Apartment apartment;
    catch_interrupts();
    return command(arguments, console);
}

int run(std::span<const wchar_t* const> given, Console& console) {
    const Arguments arguments = parse_arguments(given);
    switch (arguments.command) {
        case Command::text:
            console.out.write(arguments.text);
            break;
        case Command::list:
            return with_com(run_list, arguments, console);
        case Command::export_document:
            return with_com(run_export, arguments, console);
        case Command::query:
            return with_com(run_query, arguments, console);
        case Command::decode:
            return with_com(run_decode, arguments, console);
        case Command::spreadsheet:
            return with_com(run_spreadsheet, arguments, console);
        case Command::check:
            return with_com(run_check, arguments, console);
        case Command::diff:
            return with_com(run_diff, arguments, console);
        case Command::preview:
            return with_com(run_preview, arguments, console);
        case Command::import_workbook:
            return with_com(run_import, arguments, console);
    }
    return exit_success;
}

int failed(Console& console, const std::wstring& text, int code) noexcept {
    try {
        console.error.write_line(L"tessera: " + text);
    } catch (...) {
        // Standard error is gone: the exit code must do.
    }
    return code;
}

int run_guarded(std::span<const wchar_t* const> given) noexcept {
    Console console;
    try {
        return run(given, console);
    } catch (const Failure& failure) {
        return failed(console, failure.text(), exit_not_run);
    } catch (const Stopped&) {
        return failed(console, L"stopped; nothing was written", exit_with_errors);
    } catch (...) {
        const automation::ErrorReport error = automation::current_error();
        return failed(console, error.description.str(), exit_with_errors);
    }
}

}  // namespace
}  // namespace cli

extern "C" int wmain(int count, wchar_t** arguments) {
    const std::span<const wchar_t* const> all(arguments, static_cast<std::size_t>(count));
    return cli::run_guarded(all.subspan(all.empty() ? 0 : 1));
}
