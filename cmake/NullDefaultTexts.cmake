# cmake -DHEADER=<file> -P NullDefaultTexts.cmake: an empty text as a parameter's default becomes the
# null BSTR, which is the same to automation. widl writes L"", which a strict compiler does not take
# for a BSTR.
file(READ ${HEADER} text)
string(REPLACE " = L\"\"" " = nullptr" text "${text}")
file(WRITE ${HEADER} "${text}")
