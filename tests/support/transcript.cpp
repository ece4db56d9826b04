#include "support/transcript.h"

#include <sstream>
#include <vector>

#include "automation/conversion.h"

namespace test {
namespace {

constexpr std::wstring_view arrow = L" -> ";

std::wstring shown(const Variant& value) {
    if (value.vt == VT_EMPTY) return L"Empty";
    if (value.is_string() && value.text().empty()) return L"\"\"";
    if (value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) return automation::to_text(value).str();
    return value.punkVal ? L"[" + std::wstring(automation::type_name(value).view()) + L"]"
                         : L"Nothing";
}

// The lines that say something, without their indentation; those that " _" continues as one.
std::vector<std::wstring> lines_of(const std::wstring& transcript) {
    std::vector<std::wstring> lines;
    std::wistringstream text(transcript);
    for (std::wstring line; std::getline(text, line);) {
        line.erase(0, line.find_first_not_of(L' '));
        if (!lines.empty() && lines.back().ends_with(L" _"))
            lines.back().replace(lines.back().size() - 1, 1, line);
        else if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

std::wstring without_result(const std::wstring& line) {
    return line.substr(0, line.rfind(arrow));
}

std::wstring statement_of(const std::wstring& line) {
    const std::wstring asked = without_result(line);
    return asked.starts_with(L"? ") ? L"Call Show(" + asked.substr(2) + L")" : asked;
}

// What the lines of a script said.
class Results {
  public:
    ComPtr<ScriptedObject> recorder() {
        return make_object({{L"Show",
                             [this](const auto& arguments) {
                                 said_ = arrow;
                                 said_ += shown(arguments.at(0));
                                 return Variant();
                             }},
                            {L"EndLine",
                             [this](const auto& arguments) {
                                 if (automation::to_long(arguments.at(0)) != 0)
                                     said_ = L" -> ! " + shown(arguments.at(1));
                                 all_.push_back(std::exchange(said_, {}));
                                 return Variant();
                             }},
                            {L"Make", [](const auto& arguments) {
                                 const std::wstring name(arguments.at(0).text());
                                 return Variant(create<IDispatch>(name.c_str()).get());
                             }}});
    }
    const std::vector<std::wstring>& all() const { return all_; }

  private:
    std::wstring said_;
    std::vector<std::wstring> all_;
};

}  // namespace

void check_transcript(const std::wstring& transcript, const ScriptObjects& objects) {
    const auto engine = create<IHostKitScriptEngine>(L"KelosScript.Engine");
    const auto add = [&](const std::wstring& name, const std::wstring& code, IDispatch* object) {
        call(engine, &IHostKitScriptEngine::AddModule, Bstr(name).get(), Bstr(code).get(), object,
             static_cast<VARIANT_BOOL>(VARIANT_TRUE));
    };
    Results results;
    const auto recorder = results.recorder();
    add(L"Transcript", L"", recorder->dispatch());
    for (const auto& [name, object] : objects)
        add(name, L"", object);
    const std::vector<std::wstring> lines = lines_of(transcript);
    std::wstring code = L"On Error Resume Next\r\n";
    for (const std::wstring& line : lines)
        code += statement_of(line) + L"\r\nEndLine Err.Number, Err.Description\r\nErr.Clear\r\n";
    add(L"Script", code, nullptr);
    REQUIRE(results.all().size() == lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        CHECK(without_result(lines[i]) + results.all()[i] == lines[i]);
}

}  // namespace test
