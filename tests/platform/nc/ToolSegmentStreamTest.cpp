#include "platform/nc/ToolSegmentStream.h"

#include "platform/nc/ToolGeometry.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

using Varn::ToolGeometry;
using Varn::ToolRenderFacet;
using Varn::ToolRenderSegment;
using Varn::ToolRenderSegmentType;
using Varn::ToolSegmentStream;

namespace {

/// Counts the facets of each part, and says when it dies.
class CountingStream : public ToolSegmentStream
{
public:
    CountingStream(std::map<ToolRenderSegmentType, std::size_t> &facets, bool &isDead)
        : m_facets(facets), m_isDead(isDead)
    {
    }
    ~CountingStream() override { m_isDead = true; }

    void receiveSegment(const ToolRenderSegment &segment) override { m_facets[segment.type] += segment.facets.size(); }

private:
    std::map<ToolRenderSegmentType, std::size_t> &m_facets;
    bool &m_isDead;
};

const std::vector<ToolRenderSegmentType> allTypes{ToolRenderSegmentType::TURNING_INSERT,
                                                  ToolRenderSegmentType::TURNING_HOLDER,
                                                  ToolRenderSegmentType::TURNING_TOOL_BLOCK,
                                                  ToolRenderSegmentType::GENERIC_AXIS_X,
                                                  ToolRenderSegmentType::GENERIC_AXIS_Y,
                                                  ToolRenderSegmentType::GENERIC_AXIS_Z,
                                                  ToolGeometry::SEGMENT_PROBE_TIP,
                                                  ToolGeometry::SEGMENT_FLUTE,
                                                  ToolGeometry::SEGMENT_SHOULDER,
                                                  ToolGeometry::SEGMENT_SHAFT,
                                                  ToolGeometry::SEGMENT_HOLDER};

} // namespace

TEST(ToolSegmentStream, PartsOfOneNumberInDifferentGroupsAreDifferent)
{
    std::map<std::pair<int, int>, int> seen;
    for (std::size_t i = 0; i < allTypes.size(); ++i) {
        ++seen[{allTypes[i].group(), allTypes[i].value()}];
        for (std::size_t j = 0; j < allTypes.size(); ++j) {
            EXPECT_EQ(allTypes[i] == allTypes[j], i == j);
            EXPECT_EQ(allTypes[i] < allTypes[j], i < j);
        }
    }
    EXPECT_EQ(seen.size(), allTypes.size());
    EXPECT_EQ(ToolRenderSegmentType(ToolGeometry::SEGMENT_HOLDER).group(), ToolRenderSegmentType::GROUP_MILLING);
    EXPECT_EQ(ToolRenderSegmentType(ToolGeometry::SEGMENT_HOLDER).value(), 4);
}

TEST(ToolSegmentStream, WhoeverDrawsKnowsOnlyTheBase)
{
    std::map<ToolRenderSegmentType, std::size_t> facets;
    bool isDead = false;
    {
        const std::unique_ptr<ToolSegmentStream> stream = std::make_unique<CountingStream>(facets, isDead);
        const ToolRenderFacet facet{{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}, {{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}}};
        stream->receiveSegment({ToolGeometry::SEGMENT_FLUTE, {facet, facet}});
        stream->receiveSegment({ToolRenderSegmentType::TURNING_HOLDER, {facet}});
        stream->receiveSegment({ToolGeometry::SEGMENT_FLUTE, {facet}});
        stream->receiveSegment({ToolGeometry::SEGMENT_SHAFT, {}});
    }
    EXPECT_TRUE(isDead);
    EXPECT_THAT(facets,
                testing::ElementsAre(testing::Pair(ToolRenderSegmentType(ToolRenderSegmentType::TURNING_HOLDER), 1u),
                                     testing::Pair(ToolRenderSegmentType(ToolGeometry::SEGMENT_FLUTE), 3u),
                                     testing::Pair(ToolRenderSegmentType(ToolGeometry::SEGMENT_SHAFT), 0u)));
}
