#include "oxd/picture/VectorTexts.h"

#include <cairo-pdf.h>

#include <string_view>

namespace oxd {

namespace {

constexpr std::string_view titleKey = "Title";

std::string TitleOf(const std::vector<PictureText>& texts)
{
    for (const PictureText& text : texts) {
        if (text.key == titleKey) {
            return text.text;
        }
    }
    return {};
}

std::string OthersOf(const std::vector<PictureText>& texts, std::string_view separator)
{
    std::string all;
    for (const PictureText& text : texts) {
        if (text.key != titleKey) {
            all.append(all.empty() ? std::string_view() : separator).append(text.key).append(": ").append(text.text);
        }
    }
    return all;
}

std::string InXml(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        c == '&' ? escaped += "&amp;" : c == '<' ? escaped += "&lt;" : c == '>' ? escaped += "&gt;" : escaped += c;
    }
    return escaped;
}

} // namespace

std::string WithSvgTexts(const std::string& svg, const std::vector<PictureText>& texts)
{
    if (texts.empty()) {
        return svg;
    }
    const std::size_t inside = svg.find('>', svg.find("<svg")) + 1;
    return svg.substr(0, inside) + "\n<title>" + InXml(TitleOf(texts)) + "</title>\n<desc>" +
           InXml(OthersOf(texts, "\n")) + "</desc>" + svg.substr(inside);
}

void SetPdfTexts(cairo_surface_t* surface, const std::vector<PictureText>& texts)
{
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATE_DATE, "");
    if (!texts.empty()) {
        cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_TITLE, TitleOf(texts).c_str());
        cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_SUBJECT, OthersOf(texts, "; ").c_str());
    }
}

} // namespace oxd
