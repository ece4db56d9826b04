// Help texts of enumeration values for interface definitions. widl knows none: there, only the
// pages of the reference show them.
#ifdef __WIDL__
#define VALUE_HELP(text)
#else
#define VALUE_HELP(text) [helpstring(text)]
#endif
