#include "oxd/compare/CompareChannels.h"
#include "oxd/compare/CompareInformation.h"
#include "oxd/compare/CompareOther.h"
#include "oxd/compare/CompareSamples.h"
#include "oxd/compare/Comparison.h"
#include "oxd/compare/FileContent.h"
#include "oxd/compare/Pairs.h"
#include "oxd/system/Failure.h"

#include <algorithm>

namespace oxd {

namespace {

class FileComparison
{
public:
    FileComparison(const FileContent& a, const FileContent& b, Recorder& recorder)
        : m_a(a), m_b(b), m_recorder(recorder)
    {
    }

    void Run()
    {
        m_recorder.Compare(Aspect::Structure, "version of the format", {}, m_a.Version(), m_b.Version());
        if (m_recorder.Options().aspects != Aspects{Aspect::Information}) {
            CompareGroups();
        }
        CompareInformation(m_a.GetDataSet(), m_b.GetDataSet(), m_recorder);
        CompareOther(m_a.Other(), m_b.Other(), m_recorder);
    }

private:
    void CompareGroups()
    {
        std::size_t next = 0; // behind the groups of B that were paired so far
        for (const Pair& pair : PairByNameOrPosition(m_a.GroupNames(), m_b.GroupNames())) {
            if (!pair.a || !pair.b) {
                const Group& group = pair.a ? m_a.Groups()[*pair.a] : m_b.Groups()[*pair.b];
                m_recorder.Differ(Aspect::Structure, "group", {Numbered{group.id, group.name}},
                                  pair.a ? Content(group.name) : Content(), pair.b ? Content(group.name) : Content());
                continue;
            }
            const Group& a = m_a.Groups()[*pair.a];
            const Group& b = m_b.Groups()[*pair.b];
            if (*pair.b < next) { // those before it in A come behind it in B
                m_recorder.Compare(Aspect::Structure, "position", {Numbered{a.id, a.name}}, a.id, b.id);
            }
            next = std::max(next, *pair.b + 1);
            CompareGroup(a, b);
        }
    }

    void CompareGroup(const Group& a, const Group& b)
    {
        const Place place{Numbered{a.id, a.name}};
        m_recorder.Compare(Aspect::Structure, "name", place, a.name, b.name);
        m_recorder.Compare(Aspect::Structure, "logical id", place, a.logicalId, b.logicalId);
        m_recorder.Compare(Aspect::Structure, "slots", place, a.slots, b.slots);
        for (std::uint64_t slot = 0; slot < std::max(a.slots, b.slots); ++slot) {
            CompareSlot(a, b, slot);
        }
    }

    void CompareSlot(const Group& groupOfA, const Group& groupOfB, std::uint64_t slot)
    {
        const auto a = m_a.FindChannel(groupOfA, slot);
        const auto b = m_b.FindChannel(groupOfB, slot);
        if (!a && !b) {
            return;
        }
        const std::string name = a ? a->Name() : b->Name();
        const Place place{Numbered{groupOfA.id, groupOfA.name}, Numbered{slot, name}};
        if (a && b) {
            CompareChannels({*a, *b, m_a.Bits(groupOfA, slot), m_b.Bits(groupOfB, slot), place});
            CompareKeys(m_a.OtherKeys(groupOfA, slot), m_b.OtherKeys(groupOfB, slot), place, "", m_recorder);
        } else {
            m_recorder.Differ(Aspect::Structure, "channel", place, a ? Content(name) : Content(),
                              b ? Content(name) : Content());
        }
    }

    void CompareChannels(const ChannelPair& channels)
    {
        CompareSizes(channels, m_recorder);
        CompareAxes(channels, m_recorder);
        CompareSamples(channels, m_recorder);
    }

    const FileContent& m_a;
    const FileContent& m_b;
    Recorder& m_recorder;
};

} // namespace

Comparison CompareFiles(const std::string& a, const std::string& b, const ComparisonOptions& options)
{
    Comparison outcome{a, b};
    const FileContent contentOfA(a);
    const FileContent contentOfB(b);
    Recorder recorder(options, outcome);
    try {
        FileComparison(contentOfA, contentOfB, recorder).Run();
    } catch (const LibraryError& error) {
        throw Failure(ExitCode::Damaged, a + " and " + b, error.what());
    }
    return outcome;
}

} // namespace oxd
