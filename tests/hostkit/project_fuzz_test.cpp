// Through the DLL: project files that chance has changed. Whatever comes of one, it is refused with
// a sentence, or it can be walked, run, exported, written to and saved.
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "support/full_run.h"
#include "support/literal_project.h"

using namespace test;

namespace {

// What stands between two places where a file is cut: tags, the texts between them, and inside of
// tags the values of attributes.
std::vector<std::string> tokens_of(const std::string& text) {
    std::vector<std::string> tokens;
    std::string token;
    for (const char character : text) {
        if (character == '<' || character == '"') {
            tokens.push_back(token);
            token.clear();
        }
        token += character;
        if (character == '>') {
            tokens.push_back(token);
            token.clear();
        }
    }
    tokens.push_back(token);
    return tokens;
}

class Mutation {
  public:
    explicit Mutation(unsigned seed) : random_(seed) {}

    std::string of(std::vector<std::string> tokens) {
        for (std::size_t changes = 1 + below(3); changes > 0; --changes)
            change(tokens);
        std::string text;
        for (const std::string& token : tokens)
            text += token;
        if (below(16) == 0) text[below(text.size())] = static_cast<char>(below(256));
        return text;
    }

  private:
    std::size_t below(std::size_t bound) { return random_() % bound; }

    void change(std::vector<std::string>& tokens) {
        static constexpr const char* values[] = {"",
                                                 "0",
                                                 "-1",
                                                 "2147483647",
                                                 "4294967296",
                                                 "1e308",
                                                 "1/0",
                                                 "true",
                                                 "Anlage|Pumpe",
                                                 "Werk",
                                                 "Anlage",
                                                 "Selbst",
                                                 "Pumpen",
                                                 "Process.Pressure",
                                                 "PRESSURE.MBAR",
                                                 "double",
                                                 "date",
                                                 "A{row}",
                                                 "{row}",
                                                 "|",
                                                 "\xC3\xBC\xF0\x9F\x98\x80",
                                                 "&#x10FFFF;",
                                                 "&amp;&#9;"};
        const auto at = tokens.begin() + static_cast<std::ptrdiff_t>(below(tokens.size()));
        const std::string other = tokens[below(tokens.size())];
        switch (below(12)) {
            case 0:
                tokens.erase(at);
                break;
            case 1:
                tokens.insert(at, other);
                break;
            case 2:
                *at = other;
                break;
            default:  // most changes are to values: they pass the parser
                if (at->starts_with('"'))
                    *at = std::string("\"") + values[below(std::size(values))];
        }
    }

    std::mt19937 random_;
};

std::string small_project() {
    std::ifstream file(test_data(L"support/small_project.xml").c_str(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    // Their rows are the same again and again.
    return text.replace(text.find("<query name=\"Long\">"), text.npos,
                        "</queries></kelos-project-file>");
}

// Columns and the first rows of every query.
void walk(const ComPtr<IHostKit>& kit) {
    const long count = get(kit, &IHostKit::get_QueryCount);
    for (long index = 1; index <= count; ++index) {
        const Bstr name = get(kit, &IHostKit::get_QueryName, index);
        const auto query = get(kit, &IHostKit::get_Query, name.get());
        if (FAILED(query->Run())) continue;
        const auto content = create<ITesseraQContent>(L"Tessera.QContent");
        const auto cursor = get(content, &ITesseraQContent::get_HQuery);
        cursor->putref_Query(query.get());
        for (int row = 0; row < 20 && !get(cursor, &ITesseraHQuery::get_EOF); ++row) {
            Bstr text;
            VARIANT_BOOL written;
            content->XMLRowAsString(text.put(), VARIANT_FALSE, &written);
            cursor->MoveNext();
        }
    }
}

// What every document would export.
void run_scripts(const ComPtr<IHostKit>& kit, IKelosWorkset* workset) {
    const auto documents = get(kit, &IHostKit::get_Documents);
    const long count = get(documents, &IKelosObjects::get_Count);
    for (long index = 1; index <= count; ++index) {
        const auto document = get(documents, &IKelosObjects::get_Item, index).as<IKelosDocument>();
        const auto runner = create<ITesseraVexScript>(L"Tessera.VexScript");
        runner->putref_WorkSet(workset);
        runner->putref_Document(document.get());
        Bstr script;
        runner->GetVexScript(document.get(), VARIANT_FALSE, script.put());
        ComPtr<IXMLDOMDocument> contents;
        runner->Execute(script.get(), contents.put());
    }
}

// What is written to an object is there when the saved file is opened again.
void save(const ComPtr<IHostKit>& kit, const std::wstring& path) {
    constexpr long description = 1;
    const Bstr name(L"Anlage|Pumpe");
    const Bstr text(L"<changed & \"saved\">");
    ComPtr<IKelosObject> object;
    if (FAILED(kit->get_Object(name.get(), object.put())) || !object ||
        FAILED(kit->WriteProperty(object.get(), description, nullptr, nullptr, 0,
                                  static_cast<VARIANT>(Variant(text)))) ||
        FAILED(kit->Save(nullptr)))
        return;
    const auto again = create<IHostKit>(L"Kelos.HostKit");
    get(again, &IHostKit::Open, Bstr(path).get());
    const auto saved = get(again, &IHostKit::get_Object, Bstr(name).get()).as<IHostKitObject>();
    CHECK(get(saved, &IHostKitObject::get_Description).view() == text.view());
}

}  // namespace

TEST_CASE_FIXTURE(ComFixture, "a project file that chance has changed is refused or can be used") {
    const auto tokens = tokens_of(small_project());
    const unsigned count = is_full_run() ? 5000 : 150;
    unsigned opened = 0;
    for (unsigned seed = 0; seed < count; ++seed) {
        CAPTURE(seed);
        const TemporaryFile file(Mutation(seed).of(tokens));
        const auto kit = create<IHostKit>(L"Kelos.HostKit");
        ComPtr<IKelosWorkset> workset;
        const std::wstring problem =
            error_of([&] { call(kit, &IHostKit::Open, Bstr(file.path()).get(), workset.put()); });
        if (!workset) {
            CHECK(problem.starts_with(file.path()));
            continue;
        }
        ++opened;
        walk(kit);
        run_scripts(kit, workset.get());
        save(kit, file.path());
        call(service(), &IHostKitService::Clear);
    }
    CHECK(opened > count / 5);
    tell_figure("project files that chance changed", static_cast<long>(count));
}
