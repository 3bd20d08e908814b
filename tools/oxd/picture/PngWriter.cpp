#include "oxd/picture/PngWriter.h"

#include "oxd/system/Failure.h"

#include <algorithm>
#include <csetjmp>
#include <exception>
#include <stdexcept>
#include <utility>

namespace oxd {

namespace {

constexpr int bits = 16;

[[noreturn]] void Fail(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void Ignore(png_structp, png_const_charp)
{
}

// Gathers bytes in memory instead of writing the file, because a failure to write is an exception, which cannot pass
// through the C code that calls this.
void Append(png_structp png, png_bytep bytes, std::size_t size)
{
    bool done = true;
    try {
        static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), size);
    } catch (const std::exception&) {
        done = false;
    }
    if (!done) {
        png_error(png, "out of memory");
    }
}

void Flush(png_structp)
{
}

png_text ToPngText(const PictureText& text)
{
    png_text converted{};
    converted.compression = PNG_ITXT_COMPRESSION_NONE;
    converted.key = const_cast<char*>(text.key.c_str());   // NOLINT(*-const-cast): only read
    converted.text = const_cast<char*>(text.text.c_str()); // NOLINT(*-const-cast): only read
    return converted;
}

} // namespace

// The encoder reports an error by a long jump to here, so no step may own anything that the jump would leak.
template <typename Step>
void PngWriter::Encode(Step step)
{
    if (setjmp(png_jmpbuf(m_png)) != 0) { // NOLINT(cert-err52-cpp): the encoder knows no exceptions
        throw std::runtime_error("the picture cannot be encoded");
    }
    step();
}

PngWriter::PngWriter(OutputFile& output, std::uint64_t width, std::uint64_t height)
    : m_output(output), m_width(width), m_height(height),
      m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore)),
      m_info(m_png == nullptr ? nullptr : png_create_info_struct(m_png))
{
    if (std::max(width, height) > PNG_UINT_31_MAX) {
        png_destroy_write_struct(&m_png, &m_info);
        throw Failure(ExitCode::CannotWrite, output.Name(), "too large for a picture");
    }
    if (m_info == nullptr) {
        png_destroy_write_struct(&m_png, &m_info);
        throw std::bad_alloc();
    }
    png_set_write_fn(m_png, &m_encoded, Append, Flush);
}

PngWriter::~PngWriter()
{
    png_destroy_write_struct(&m_png, &m_info);
}

void PngWriter::WriteHeader(const std::vector<PictureText>& texts)
{
    std::vector<png_text> converted;
    std::transform(texts.begin(), texts.end(), std::back_inserter(converted), ToPngText);
    Encode([this, &converted] {
        const png_color_16 missing{};
        png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(m_width), static_cast<png_uint_32>(m_height), bits,
                     PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_tRNS(m_png, m_info, nullptr, 0, &missing);
        png_set_text(m_png, m_info, converted.data(), static_cast<int>(converted.size()));
        png_write_info(m_png, m_info);
    });
}

void PngWriter::WriteRow(const std::vector<std::uint16_t>& levels)
{
    std::vector<png_byte> bytes;
    for (const std::uint16_t level : levels) {
        bytes.push_back(static_cast<png_byte>(level >> 8));
        bytes.push_back(static_cast<png_byte>(level & 0xFF));
    }
    Encode([this, &bytes] { png_write_row(m_png, bytes.data()); });
    m_output.Write(std::exchange(m_encoded, {}));
}

void PngWriter::Finish()
{
    Encode([this] { png_write_end(m_png, m_info); });
    m_output.Write(std::exchange(m_encoded, {}));
}

} // namespace oxd
