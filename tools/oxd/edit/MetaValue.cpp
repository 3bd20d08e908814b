#include "oxd/edit/MetaValue.h"

#include "oxd/edit/OutputDraft.h"
#include "oxd/edit/SaveCarrying.h"
#include "oxd/inspection/HeaderNode.h"
#include "oxd/library/KeptText.h"
#include "oxd/library/MetaNode.h"
#include "oxd/system/Failure.h"

namespace oxd {

namespace {

Failure NoItem(const std::string& file, const MetaPath& path)
{
    return {ExitCode::No, file, "no information named \"" + path.text + "\""};
}

Failure WrongKind(const std::string& file, const std::string& name, const char* kind)
{
    return {ExitCode::No, file, "\"" + name + "\" is " + kind};
}

// Below the root of a tree in memory, or as a header has it.
template <typename Node>
Node FindItem(Node group, const std::string& file, const MetaPath& path)
{
    for (const std::string& name : path.groups) {
        const auto next = group.FindGroup(name);
        if (!next) {
            throw NoItem(file, path);
        }
        group = *next;
    }
    const auto item = group.FindItem(path.item);
    if (!item) {
        throw group.FindGroup(path.item) ? WrongKind(file, path.text, "a group") : NoItem(file, path);
    }
    return *item;
}

// A group and an item of the same name side by side would be too easy to mistake, so neither is made beside the other.
void CreateItem(const DataSet& dataSet, const MetaChange& change)
{
    MetaNode group = MetaNode::Root(dataSet);
    for (const std::string& name : change.path.groups) {
        if (group.FindItem(name)) {
            throw WrongKind(change.file, name, "no group");
        }
        const auto next = group.FindGroup(name);
        group = next ? *next : group.AddGroup(name);
    }
    if (group.FindGroup(change.path.item)) {
        throw WrongKind(change.file, change.path.text, "a group");
    }
    auto item = group.FindItem(change.path.item);
    if (item) {
        item->SetValue(change.value);
    } else {
        group.AddItem(change.path.item, change.value);
    }
}

void RequireKept(const std::string& what, const std::string& text, bool kept)
{
    if (!kept) {
        throw Failure(ExitCode::Usage, what + " \"" + text + "\"", "a file would not keep it");
    }
}

// A file would silently drop or change some texts.
void RequireKept(const MetaChange& change)
{
    RequireKept("value", change.value, IsKeptValue(change.value));
    if (!change.create) {
        return;
    }
    std::vector<std::string> names = change.path.groups;
    names.push_back(change.path.item);
    for (const std::string& name : names) {
        RequireKept("name", name, IsKeptName(name));
    }
    if (change.path.groups.empty()) {
        throw Failure(ExitCode::Usage, change.path.text, "a value can only be in a group");
    }
}

// Some names are changed on saving because of the names beside them, for example one that differs from another in case
// only. This shows only in the saved file.
void RequireArrived(const MetaChange& change, const std::string& savedFile, const std::string& output)
{
    const DataSet saved = DataSet::Open(savedFile);
    std::string arrived;
    try {
        arrived = FindItem(MetaNode::Root(saved), savedFile, change.path).Value();
    } catch (const Failure&) { // NOLINT(bugprone-empty-catch): there is nothing under that name
    }
    if (arrived != change.value) {
        throw Failure(ExitCode::Usage, output,
                      "\"" + change.path.text +
                          "\" would have another name or value there, since a file cannot keep it");
    }
}

// Gives the name of the saved file.
std::string SaveChanged(const MetaChange& change, const CarriedSections& carried, OutputFile& output)
{
    DataSet dataSet = DataSet::Open(change.file);
    if (change.create) {
        CreateItem(dataSet, change);
    } else {
        FindItem(MetaNode::Root(dataSet), change.file, change.path).SetValue(change.value);
    }
    std::string saved = SaveCarrying(carried, dataSet, output);
    RequireArrived(change, saved, output.Name());
    return saved;
}

} // namespace

MetaPath::MetaPath(std::string pathText, const std::string& separator) : text(std::move(pathText))
{
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos; end = text.find(separator, begin)) {
        groups.push_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    item = text.substr(begin);
}

std::string GetMetaValue(const inspect::Inspection& inspection, const MetaPath& path)
{
    return FindItem(HeaderNode::Root(*inspection.dataSet), inspection.file, path).Value();
}

std::string SetMetaValue(const MetaChange& change, const CarriedSections& carried)
{
    RequireKept(change);
    if (!change.inPlace) {
        RequireOtherFile(change.file, change.output.name);
    }
    OutputDraft draft(change.output, change.isDryRun);
    return draft.Finish(change.file, SaveChanged(change, carried, draft.File()));
}

} // namespace oxd
