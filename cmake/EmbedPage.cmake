# Run as a script: writes SOURCE, which defines ViewerPage() as the bytes of the file PAGE, or as nothing without one.
set(numbers "")
if(PAGE)
  file(READ "${PAGE}" digits HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," numbers "${digits}")
  string(REGEX REPLACE "(....,....,....,....,....,....,....,....,....,....,....,....,)" "\\1\n" numbers "${numbers}")
endif()
file(WRITE "${SOURCE}" "#include \"oxd/viewer/ViewerPage.h\"

namespace oxd {

namespace {

// Ends with a byte that is none of the page's, so that no page is no empty array.
constexpr unsigned char page[] = {${numbers}0};

} // namespace

std::string_view ViewerPage()
{
    return {reinterpret_cast<const char*>(page), sizeof page - 1};
}

} // namespace oxd
")
