#include "oxd/compare/CompareOther.h"

namespace oxd {

namespace {

// What each file has under a key, with null where it lacks that.
template <typename Value>
auto Joined(const std::map<std::string, Value>& a, const std::map<std::string, Value>& b)
{
    std::map<std::string, std::pair<const Value*, const Value*>> both;
    for (const auto& [key, value] : a) {
        both[key].first = &value;
    }
    for (const auto& [key, value] : b) {
        both[key].second = &value;
    }
    return both;
}

Content ToContent(const std::string* value)
{
    return value == nullptr ? Content() : Content(*value);
}

} // namespace

void CompareOther(const OtherContent& a, const OtherContent& b, Recorder& recorder)
{
    for (const auto& [name, keys] : Joined(a.Sections(), b.Sections())) {
        const std::string section = "section \"" + name + "\"";
        if (keys.first != nullptr && keys.second != nullptr) {
            CompareKeys(*keys.first, *keys.second, {}, " in " + section, recorder);
        } else {
            recorder.Compare(Aspect::Other, section, {}, ToContent(keys.first == nullptr ? nullptr : &name),
                             ToContent(keys.second == nullptr ? nullptr : &name));
        }
    }
    recorder.Compare(Aspect::Other, "bytes behind the samples", {}, a.BytesLeftOver(), b.BytesLeftOver());
}

void CompareKeys(const KeyValues& a, const KeyValues& b, const Place& place, const std::string& section,
                 Recorder& recorder)
{
    for (const auto& [key, values] : Joined(a, b)) {
        const std::string what = std::string("key \"").append(key).append("\"").append(section);
        recorder.Compare(Aspect::Other, what, place, ToContent(values.first), ToContent(values.second));
    }
}

} // namespace oxd
