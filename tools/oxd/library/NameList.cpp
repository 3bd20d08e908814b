#include "oxd/library/NameList.h"

#include "oxd/system/Text.h"

namespace oxd {

namespace {

constexpr std::size_t shownNames = 5;
constexpr std::size_t shownCharacters = 40; // of a name

} // namespace

void NameList::Add(const std::string& name, const std::string& otherwise)
{
    if (m_count++ < shownNames) {
        m_shown.push_back("\"" + Shortened(name, shownCharacters) + "\" (" + otherwise + ")");
    }
}

std::string NameList::Sentence() const
{
    if (m_shown.empty()) {
        return m_none;
    }
    std::string text = "it has " + m_shown.front();
    for (std::size_t i = 1; i < m_shown.size(); ++i) {
        text.append(i + 1 == m_count ? " and " : ", ").append(m_shown[i]);
    }
    const std::size_t more = m_count - m_shown.size();
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

} // namespace oxd
