#include "oxd/provenance/StepLog.h"

#include "oxd/inspection/HeaderNode.h"
#include "oxd/library/MetaNode.h"
#include "oxd/system/Failure.h"

#include <memory>
#include <utility>

namespace oxd {

namespace {

namespace model = veltaris::velflexlib::dataset;

constexpr const char* allSteps = "Provenance";

std::string StepName(std::uint64_t number)
{
    return "Step " + std::to_string(number);
}

Step ToStep(const HeaderNode& group)
{
    Step step;
    for (std::size_t i = 0; i < group.ChildCount(); ++i) {
        const HeaderNode item = group.Child(i);
        if (!item.IsGroup()) {
            step.items.emplace_back(item.Name(), item.Value());
        }
    }
    return step;
}

} // namespace

void AppendStep(const DataSet& dataSet, const Step& step)
{
    MetaNode root = MetaNode::Root(dataSet);
    const auto known = root.FindGroup(allSteps);
    const MetaNode steps = known ? *known : root.AddGroup(allSteps);
    std::uint64_t number = 1;
    while (steps.FindGroup(StepName(number))) {
        ++number;
    }
    const MetaNode group = steps.AddGroup(StepName(number));
    for (const auto& [name, value] : step.items) {
        group.AddItem(name, value);
    }
}

void AppendStep(model::CInfoSet& information, const Step& step)
{
    model::CInfoSetItem* steps = information.FindGroup(allSteps, false);
    if (steps == nullptr) {
        information.AddGroup(std::make_unique<model::CInfoSetItem>(allSteps));
        steps = information.FindGroup(allSteps, false);
    }
    std::uint64_t number = 1;
    while (steps->FindGroup(StepName(number)) != nullptr) {
        ++number;
    }
    auto group = std::make_unique<model::CInfoSetItem>(StepName(number));
    for (const auto& [name, value] : step.items) {
        group->AddSubItem(std::make_unique<model::CInfoSetItem>(name, value));
    }
    steps->AddSubItem(std::move(group));
}

std::vector<Step> ReadSteps(const inspect::Inspection& inspection)
{
    std::vector<Step> steps;
    const auto group = HeaderNode::Root(*inspection.dataSet).FindGroup(allSteps);
    auto next = group ? group->FindGroup(StepName(1)) : std::nullopt;
    while (next) {
        steps.push_back(ToStep(*next));
        next = group->FindGroup(StepName(steps.size() + 1));
    }
    return steps;
}

void RequireRecorded(const Step& step, const std::string& savedFile, const std::string& output)
{
    const std::vector<Step> steps = ReadSteps(InspectQuietly(savedFile));
    if (steps.empty() || steps.back() != step) {
        throw Failure(ExitCode::Usage, output,
                      "its provenance would not be kept because of other information named alike; --no-provenance "
                      "records none");
    }
}

} // namespace oxd
