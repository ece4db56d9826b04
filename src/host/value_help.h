// Help texts of enumeration values for interface definitions. widl knows none: there, only the
// pages of the reference show them.
#ifdef __WIDL__
#define VALUE_HELP(text)
#else
#define VALUE_HELP(text) [helpstring(text)]
#endif

// MIDL takes the identifier of an enumeration inside of a library only.
#ifdef __midl
#define ENUMERATION_ID(id) public
#else
#define ENUMERATION_ID(id) uuid(id)
#endif
