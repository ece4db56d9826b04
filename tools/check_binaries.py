#!/usr/bin/env python3
"""Reads the headers of the files that are delivered: entry points, imports, the loader's protections,
version information, manifest and symbols.

    check_binaries.py FOLDER [x86|amd64|arm64] [VERSION]

The folder holds Tessera.dll, KelosHostKit.dll and tessera.exe. Needs pefile (Debian: python3-pefile).
"""

import os
import sys

import pefile

SERVER_ENTRIES = {"DllCanUnloadNow", "DllGetClassObject", "DllInstall", "DllRegisterServer",
                  "DllUnregisterServer"}
FILES = {"Tessera.dll": SERVER_ENTRIES, "KelosHostKit.dll": SERVER_ENTRIES, "tessera.exe": set()}
SYSTEM_LIBRARIES = {"advapi32.dll", "comctl32.dll", "crypt32.dll", "gdi32.dll", "kernel32.dll",
                    "msvcrt.dll", "ole32.dll", "oleaut32.dll", "shell32.dll", "user32.dll"}
# What the older version of the common controls exports by name.
NAMED_CONTROLS = {b"InitCommonControlsEx"}
MACHINES = {"x86": 0x14C, "amd64": 0x8664, "arm64": 0xAA64}
PROTECTIONS = {"address-space randomisation": 0x0040, "data-execution prevention": 0x0100}
HIGH_ENTROPY = {"64-bit address-space randomisation": 0x0020}
VERSION_FIELDS = ("CompanyName", "FileDescription", "FileVersion", "InternalName",
                  "LegalCopyright", "OriginalFilename", "ProductName", "ProductVersion")


def exported_names(image):
    table = getattr(image, "DIRECTORY_ENTRY_EXPORT", None)
    # An entry without a name could still be called, by its number.
    return {(entry.name or b"#%d" % entry.ordinal).decode() for entry in table.symbols} if table else set()


def check_imports(image):
    for library in image.DIRECTORY_ENTRY_IMPORT:
        name = library.dll.decode().lower()
        if name not in SYSTEM_LIBRARIES and not name.startswith("api-ms-win-"):
            yield f"imports from {name}, which is not the system's"
        if name == "comctl32.dll":
            for entry in library.imports:
                if entry.name and entry.name not in NAMED_CONTROLS:
                    yield f"imports {entry.name.decode()} by name, which only common controls 6 have"


def check_protections(image, architecture):
    wanted = PROTECTIONS if architecture == "x86" else PROTECTIONS | HIGH_ENTROPY
    for name, bit in wanted.items():
        if not image.OPTIONAL_HEADER.DllCharacteristics & bit:
            yield f"goes without {name}"
    # Without relocations the loader cannot place the image anywhere else.
    if image.FILE_HEADER.Characteristics & 0x0001 or not hasattr(image, "DIRECTORY_ENTRY_BASERELOC"):
        yield "has no relocations"
    for section in image.sections:
        if section.IMAGE_SCN_MEM_EXECUTE and section.IMAGE_SCN_MEM_WRITE:
            yield f"section {section.Name.rstrip(bytes(1)).decode()} is both writable and executable"


def version_strings(image):
    return {key.decode(): value.decode()
            for info in getattr(image, "FileInfo", []) for block in info
            for table in getattr(block, "StringTable", [])
            for key, value in table.entries.items()}


def check_version(image, file_name, version):
    strings = version_strings(image)
    for field in VERSION_FIELDS:
        if not strings.get(field):
            yield f"has no {field} in its version information"
    if strings.get("OriginalFilename") != file_name:
        yield f"calls itself {strings.get('OriginalFilename')}"
    fixed = image.VS_FIXEDFILEINFO[0]
    numbers = ".".join(str(n) for n in (fixed.FileVersionMS >> 16, fixed.FileVersionMS & 0xFFFF,
                                        fixed.FileVersionLS >> 16, fixed.FileVersionLS & 0xFFFF))
    if not numbers == strings.get("FileVersion") == (version or numbers):
        yield f"is version {numbers} to programs, {strings.get('FileVersion')} to people"


def resources(image, kind):
    for entry in image.DIRECTORY_ENTRY_RESOURCE.entries:
        if entry.id == kind or str(entry.name or "") == kind:
            for resource in entry.directory.entries:
                for language in resource.directory.entries:
                    place = language.data.struct
                    yield image.get_data(place.OffsetToData, place.Size)


def check_resources(image, file_name):
    manifests = list(resources(image, pefile.RESOURCE_TYPE["RT_MANIFEST"]))
    if file_name.endswith(".exe"):
        if len(manifests) != 1:
            yield f"has {len(manifests)} manifests"
        for wanted in (b"longPathAware", b"dpiAwareness", b"Common-Controls", b"asInvoker"):
            if not any(wanted in manifest for manifest in manifests):
                yield f"has no {wanted.decode()} in its manifest"
    elif len(list(resources(image, "TYPELIB"))) != 2:
        yield "does not hold its type library and the contract's"


def check_symbols(image, path):
    if hasattr(image, "DIRECTORY_ENTRY_DEBUG"):
        return
    symbols = path + ".debug"
    # The section's name is too long for the header, and the table of such names was stripped.
    link = os.path.basename(symbols).encode() + bytes(1)
    if not any(section.get_data().startswith(link) for section in image.sections):
        yield "does not say where its symbols are"
    elif not os.path.exists(symbols):
        yield "has no symbol file beside it"


def check_file(path, entries, architecture, version):
    if not os.path.exists(path):
        yield f"is not in {os.path.dirname(path)}"
        return
    image = pefile.PE(path)
    file_name = os.path.basename(path)
    if image.FILE_HEADER.Machine != MACHINES[architecture]:
        yield f"is not for {architecture}"
    exports = exported_names(image)
    if exports != entries:
        yield f"exports {' '.join(sorted(exports)) or 'nothing'}"
    yield from check_imports(image)
    yield from check_protections(image, architecture)
    yield from check_version(image, file_name, version)
    yield from check_resources(image, file_name)
    yield from check_symbols(image, path)


def main(folder, architecture="amd64", version=None):
    findings = 0
    for name, entries in FILES.items():
        for finding in check_file(os.path.join(folder, name), entries, architecture, version):
            print(f"{name} {finding}")
            findings += 1
        print(f"{name}: checked")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
