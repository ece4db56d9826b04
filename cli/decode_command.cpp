// tessera decode: decodes a file of encoded strings.

#include <optional>

#include "automation/dispatch.h"
#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/findings.h"
#include "cli/interrupt.h"
#include "cli/output_path.h"
#include "cli/project.h"
#include "cli/standard_path.h"
#include "cli/text_file.h"

namespace cli {

using automation::Bstr;
using automation::ComPtr;
using automation::get;

namespace {

// Takes the first line off the text, without its line end.
std::u16string_view take_line(std::u16string_view& text) {
    const std::size_t end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    return line;
}

class Decoding {
  public:
    Decoding(const Arguments& arguments, Console& console)
        : arguments_(arguments),
          console_(console),
          service_(recording_service(false)),
          errors_(service_, false),
          functions_(automation::create_object<ITesseraGFunctions>(L"Tessera.GFunctions")),
          prefix_(get(functions_, &ITesseraGFunctions::get_EncodePrefix)) {
        if (arguments.out) check_output_path(*arguments.out, arguments.input);
    }

    int run() {
        const std::u16string file = read_text_file(arguments_.input, L"the file");
        std::u16string_view rest = file;
        if (arguments_.out) file_.emplace(*arguments_.out, FileEncoding::utf8);
        TextSink& sink = file_ ? static_cast<TextSink&>(*file_) : console_.out;
        for (long number = 1; !rest.empty() && !is_interrupted(); ++number)
            if (const std::u16string_view line = take_line(rest); !line.empty())
                if (const auto text = decoded(line, number)) sink.write(*text + u"\n");
        if (file_) file_->finish();
        return tell(rest.empty());
    }

  private:
    std::optional<std::u16string> decoded(std::u16string_view line, long number) {
        if (!line.starts_with(prefix_.u16())) {
            mark(number, L"this is not an encoded string");
            return {};
        }
        const Bstr text = get(functions_, &ITesseraGFunctions::Decode, Bstr(line).get());
        if (errors_.count() != reported_) {
            reported_ = errors_.count();
            mark(number, L"this encoded string is damaged");
            return {};
        }
        ++count_;
        return std::u16string(text.u16());
    }

    void mark(long number, const wchar_t* problem) {
        ++problems_;
        console_.error.write_line(input_name(arguments_.input) + L":" + std::to_wstring(number) +
                                  L": " + problem);
    }

    int tell(bool is_complete) {
        const std::wstring count = count_of(count_, L"string");
        if (!is_complete)
            console_.error.write_line(L"tessera: stopped; " + count +
                                      (count_ == 1 ? L" was" : L" were") + L" written");
        if (file_ && !arguments_.quiet)
            console_.out.write_line(count + L", " + count_of(problems_, L"error"));
        if (file_) tell_written(console_, *arguments_.out, arguments_.quiet);
        return is_complete && problems_ == 0 ? exit_success : exit_with_errors;
    }

    const Arguments& arguments_;
    Console& console_;
    const ComPtr<IHostKitService> service_;
    ErrorCounter errors_;
    const ComPtr<ITesseraGFunctions> functions_;
    const Bstr prefix_;
    std::optional<TextFile> file_;
    std::size_t reported_ = 0;
    std::size_t count_ = 0;
    std::size_t problems_ = 0;
};

}  // namespace

int run_decode(const Arguments& arguments, Console& console) {
    return Decoding(arguments, console).run();
}

}  // namespace cli
