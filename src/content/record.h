// What the records of a content element share: each writes itself as one title element with items
// and reads itself back.
#pragma once

#include "archive/xml_publics.h"
#include "host/error_boundary.h"

namespace tessera {

// The internal members of a record. Not on any automation interface: only a `Tessera` object calls
// them, on records that it owns.
class Record {
  public:
    virtual const wchar_t* TitleIdent() const noexcept = 0;

    // Writes the record below the owner (a new document when nothing) and returns its title.
    ArchiveNode get_XMLNode(ArchiveNode& owner);
    // Reads the record from the title, or from its title below the owner. Does nothing for two
    // nothings.
    void put_XMLNode(const dom::Node& owner, const dom::Node& title);

  protected:
    ~Record() = default;

    // Source text of error reports.
    virtual const wchar_t* source() const noexcept = 0;
    virtual const wchar_t* version() const noexcept { return L"1"; }
    virtual void write_items(ArchiveNode& title, ArchiveNode& owner) = 0;
    // The title may be nothing; a record then stays as it is unless it says otherwise.
    virtual void read(const dom::Node& owner, const dom::Node& title);
    virtual void read_items(const dom::Node& title, std::int16_t version) = 0;
};

// Items of a record: written with the type that a field has, read back into it.
void write_text(ArchiveNode& title, const wchar_t* name, const automation::Bstr& value);
void write_long(ArchiveNode& title, const wchar_t* name, long value);
void write_short(ArchiveNode& title, const wchar_t* name, std::int16_t value);
void write_bool(ArchiveNode& title, const wchar_t* name, bool value);

automation::Bstr read_text(const dom::Node& title, const wchar_t* name);
long read_long(const dom::Node& title, const wchar_t* name);
std::int16_t read_short(const dom::Node& title, const wchar_t* name);
bool read_bool(const dom::Node& title, const wchar_t* name);

}  // namespace tessera
