#include "repository/transaction/BeforeImages.h"

namespace Repository {

void BeforeImages::add(const Node& node, const NodeState& before)
{
    if (!StepRecorder::records(node.backend))
        return;
    OfBackend& kept = backends[node.backend];
    kept.isHidden = kept.isHidden || before.isHidden();
    // The value of a new node comes right after it.
    if (kept.images.empty() || kept.images.back().node != &node)
        kept.images.push_back({&node, node.getPath(), before});
}

void BeforeImages::hide(Backend* backend)
{
    if (StepRecorder::records(backend))
        backends[backend].isHidden = true;
}

void BeforeImages::report(Backend& backend, AttributeTree& tree, StepRecorder& recorder)
{
    const OfBackend& kept = backends[&backend];
    const bool areTooMany = kept.images.size() > StepRecorder::mostEntries;
    std::vector<EntryChange> changes;
    for (const Image& image : kept.images) {
        if (!areTooMany)
            changes.push_back({image.path, image.before, NodeState::at(tree, image.path)});
    }
    if (kept.isHidden)
        recorder.forgetText(backend);
    if (areTooMany)
        recorder.forgetEntries(backend);
    recorder.endShape(backend, std::move(changes));
}

} // namespace Repository
