// What the records of a content element share: each writes itself as one title element with items
// and reads itself back.
#pragma once

#include "archive/xml_publics.h"
#include "host/error_boundary.h"
#include "tessera.h"

namespace tessera {

// What distinguishes the classes of records.
struct RecordClass {
    const wchar_t* source;  // of error reports
    automation::BstrView title;
    automation::BstrView version;
};

// The internal members of a record. Not on any automation interface: only a `Tessera` object calls
// them, on records that it owns.
class Record {
  public:
    // The name of the record's element.
    automation::BstrView title_name() const noexcept { return record_class_.title; }

    // Writes the record below the owner (a new document when nothing) and returns its title.
    ArchiveNode write_below(ArchiveNode& owner) noexcept;
    // Reads the record from the title, or from its title below the owner. Does nothing for two
    // nothings.
    void read_from(const ArchiveReader& owner, const dom::Node& title) noexcept;

  protected:
    explicit Record(const RecordClass& record_class) noexcept : record_class_(record_class) {}
    ~Record() = default;

    virtual void write_items(ArchiveNode& title, ArchiveNode& owner) = 0;
    // The title may be nothing; a record then stays as it is unless it says otherwise.
    virtual void read(const ArchiveReader& owner, const dom::Node& title);
    virtual void read_items(const ArchiveReader& title, std::int16_t version) = 0;

  private:
    const RecordClass& record_class_;
};

// Items of a record: written with the type that a field has, read back into it.
void write_text(ArchiveNode& title, automation::BstrView name, automation::BstrView value);
void write_long(ArchiveNode& title, automation::BstrView name, long value);
void write_short(ArchiveNode& title, automation::BstrView name, std::int16_t value);
void write_bool(ArchiveNode& title, automation::BstrView name, bool value);

automation::Bstr read_text(const ArchiveReader& title, automation::BstrView name);
long read_long(const ArchiveReader& title, automation::BstrView name);
std::int16_t read_short(const ArchiveReader& title, automation::BstrView name);
bool read_bool(const ArchiveReader& title, automation::BstrView name);

// How records keep variants: strings in office form, everything else as it came.

// What to keep of a value that is given in the form `type` under the locale.
automation::Variant stored_form(automation::Variant value, uceDataType type, long lcid);
// What to give for a kept value when it is wanted in the form `type`.
automation::Variant given_form(const automation::Variant& stored, uceDataType type, long lcid);
// Re-reads a kept string under another locale; every other value stays.
void change_locale(automation::Variant& stored, long from_lcid, long to_lcid);

}  // namespace tessera
