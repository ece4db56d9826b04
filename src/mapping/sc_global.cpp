#include "mapping/sc_global.h"

#include "content/tessera_content.h"
#include "host/error_boundary.h"
#include "host/service.h"
#include "mapping/number_system.h"

namespace tessera {

using automation::Bstr;
using automation::BstrView;
using automation::ComPtr;
using automation::get;
using automation::view_of;
using namespace automation::literals;

namespace {

constexpr wchar_t source[] = L"Tessera.SCGlobal";

constexpr MemberName member(const wchar_t* label) {
    return {source, label};
}

constexpr MemberName get_project = member(L"Property Get 'Project'");
constexpr MemberName get_report_object = member(L"Property Get 'ReportObject'");

constexpr BstrView report_object_entry = L"@ReportObject"_bstr;

}  // namespace

void SCGlobal::set_document(ComPtr<IKelosDocument> document) noexcept {
    guarded(member(L"Property Set 'Document'"), [&] {
        document_ = std::move(document);
        mapping_table_ = {};
        trace(L"Set mDocument = vNewValue");
        if (document_) mapping_table_ = find_mapping_table(document_.get(), source);
    });
}

ComPtr<IKelosProject> SCGlobal::project() noexcept {
    return guarded_result<ComPtr<IKelosProject>>(get_project, [&](auto& project) {
        if (workset_) project = get(workset_, &IKelosWorkset::get_CurrentProject);
    });
}

ComPtr<IKelosObject> SCGlobal::report_object() noexcept {
    return guarded_result<ComPtr<IKelosObject>>(get_report_object, [&](auto& object) {
        if (!document_) return;
        const auto entries = get(document_, &IKelosDocument::get_NamedEntries);
        const auto entry = get(entries, &IKelosNamedEntries::get_Item, report_object_entry.get());
        if (entry) object = get(entry, &IKelosNamedEntry::get_Object);
        if (!object) object = get(document_, &IKelosDocument::get_Owner);
    });
}

const ArchiveNode& SCGlobal::contents_root() noexcept {
    guarded(member(L"Friend Property Get 'ContentsRoot'"), [&] {
        if (!contents_root_) contents_root_ = Tessera::create_contents_root({});
    });
    return contents_root_;
}

void SCGlobal::AddOptionsToXml() noexcept {
    guarded(member(L"Friend Sub 'AddOptionsToXml'"), [&] {
        const OptionCollection options =
            automation::make<SpecOptToCollConverter>()->Convert(mapping_table_.object.get());
        const ArchiveNode& root = contents_root();
        automation::make<XMLOptions>()->write_below(root, &options);
        trace_node(source, L"->AddOptionsToXml: updated root ", root.node());
    });
}

STDMETHODIMP SCGlobal::Content(BSTR DocPointer, IKelosObject* KelosObject, BSTR PropName,
                               VARIANT PropParameter, BSTR PhysUnitLabel, BSTR IOMode,
                               VARIANT_BOOL AllValuesNumeric,
                               VARIANT_BOOL EmptyNumericValueStayEmpty) {
    transfer({view_of(DocPointer), KelosObject, BstrView(PropName), PropParameter,
              BstrView(PhysUnitLabel), view_of(IOMode), AllValuesNumeric != VARIANT_FALSE,
              EmptyNumericValueStayEmpty != VARIANT_FALSE});
    return S_OK;
}

STDMETHODIMP SCGlobal::ContentFix(BSTR DocPointer, VARIANT vNewValue, VARIANT_BOOL AllValuesNumeric,
                                  VARIANT_BOOL EmptyNumericValueStayEmpty) {
    transfer_fixed(view_of(DocPointer), vNewValue, AllValuesNumeric != VARIANT_FALSE,
                   EmptyNumericValueStayEmpty != VARIANT_FALSE);
    return S_OK;
}

STDMETHODIMP SCGlobal::get_WorkSet(IKelosWorkset** Result) {
    return give(Result, workset_, member(L"Property Get 'WorkSet'"));
}

STDMETHODIMP SCGlobal::get_Document(IKelosDocument** Result) {
    return give(Result, document_, member(L"Property Get 'Document'"));
}

STDMETHODIMP SCGlobal::get_Project(IKelosProject** Result) {
    return answer(Result, get_project, [&] { return project(); });
}

STDMETHODIMP SCGlobal::get_ReportObject(IKelosObject** Result) {
    return answer(Result, get_report_object, [&] { return report_object(); });
}

STDMETHODIMP SCGlobal::get_MappingTableExcel(IKelosMappingTable** Result) {
    return give(Result, mapping_table_.table, member(L"Property Get 'MappingTableExcel'"));
}

// Reports under the routine that it shares its work with.
STDMETHODIMP SCGlobal::ExcelABC(long Index, BSTR* Result) {
    return answer(Result, member(L"Private Function 'NumericSystem'"),
                  [&] { return NumericSystem(column_letters, {}, Index); });
}

}  // namespace tessera
