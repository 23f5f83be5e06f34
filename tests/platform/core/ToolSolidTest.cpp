#include "platform/core/ToolSolid.h"

#include "platform/core/ToolSLDGeometry.h"
#include "support/Failure.h"
#include "support/GeometryFile.h"

#include <TopExp_Explorer.hxx>
#include <TopoDS_Builder.hxx>
#include <TopoDS_Compound.hxx>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <thread>
#include <vector>

using namespace TestSupport;
using namespace Varn;

namespace {

std::string fileBytes(const std::filesystem::path &path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

std::string solidOf(const char *name)
{
    return std::string(loadGeometry(L"id", fileBytes(std::filesystem::path(SOLIDS_DIR) / name))->solidBytes());
}

int count(const TopoDS_Shape &shape, TopAbs_ShapeEnum kind)
{
    int found = 0;
    for (TopExp_Explorer at(shape, kind); at.More(); at.Next())
        ++found;
    return found;
}

/// Compounds in compounds, \a depth of them.
TopoDS_Shape nested(int depth)
{
    const TopoDS_Builder builder;
    TopoDS_Compound inner;
    builder.MakeCompound(inner);
    for (int i = 1; i < depth; ++i) {
        TopoDS_Compound outer;
        builder.MakeCompound(outer);
        builder.Add(outer, inner);
        inner = outer;
    }
    return inner;
}

} // namespace

TEST(ToolSolidTest, AFileOfVersion1HoldsTheSolidThatWasPutIntoIt)
{
    struct Row {
        const char *file;
        TopAbs_ShapeEnum kind;
        int solids, faces;
    };
    const Row rows[] = {
        {"box.3DTool", TopAbs_SOLID, 1, 6},
        {"cylinder.3DTool", TopAbs_SOLID, 1, 3}, // side, bottom, top
        {"cone.3DTool", TopAbs_SOLID, 1, 3},
        {"sphere.3DTool", TopAbs_SOLID, 1, 1},
        {"torus.3DTool", TopAbs_SOLID, 1, 1},
        {"rounded_box.3DTool", TopAbs_COMPOUND, 1, 26}, // 6 sides, 12 edges, 8 corners
        {"moved.3DTool", TopAbs_COMPOUND, 3, 12},       // two cylinders, a box
        {"moved_twice.3DTool", TopAbs_COMPOUND, 6, 24},
        {"empty_compound.3DTool", TopAbs_COMPOUND, 0, 0},
    };
    for (const Row &row : rows) {
        const auto shape = ToolSolid::fromBytes(solidOf(row.file));
        EXPECT_EQ(shape->ShapeType(), row.kind) << row.file;
        EXPECT_EQ(count(*shape, TopAbs_SOLID), row.solids) << row.file;
        EXPECT_EQ(count(*shape, TopAbs_FACE), row.faces) << row.file;
    }
}

// The modelling library turns directions into unit vectors as it reads, so the last bits of a number may change.
TEST(ToolSolidTest, ASolidOfEveryKindKeepsItsPartsThroughAWrite)
{
    int solids = 0;
    for (const auto &entry : std::filesystem::directory_iterator(SOLIDS_DIR)) {
        const std::string bytes = solidOf(entry.path().filename().c_str());
        const auto shape = ToolSolid::fromBytes(bytes);
        const std::string written = ToolSolid::toBytes(*shape);
        const auto again = ToolSolid::fromBytes(written);
        EXPECT_EQ(written.size(), bytes.size()) << entry.path();
        EXPECT_EQ(again->ShapeType(), shape->ShapeType()) << entry.path();
        for (const auto kind : {TopAbs_SOLID, TopAbs_FACE, TopAbs_EDGE, TopAbs_VERTEX})
            EXPECT_EQ(count(*again, kind), count(*shape, kind)) << entry.path();
        ++solids;
    }
    EXPECT_GE(solids, 29);
}

TEST(ToolSolidTest, ThereIsNoSolidInNothing)
{
    EXPECT_EQ(failureOf([] { ToolSolid::toBytes(TopoDS_Shape()); }), "InvalidInput: There is no solid to write");
    EXPECT_EQ(failureOf([] { ToolSolid::fromBytes({}); }),
              "GeometryLoadError: The solid cannot be read: \"Open CASCADE Topology V4, (c) Open Cascade\" is missing, "
              "at byte 0");
}

TEST(ToolSolidTest, WhatCouldNotBeReadAgainIsNotWritten)
{
    EXPECT_EQ(failureOf([] { ToolSolid::fromBytes(ToolSolid::toBytes(nested(100))); }), "none");
    EXPECT_EQ(failureOf([] { ToolSolid::toBytes(nested(101)); }).substr(0, 73),
              "InvalidInput: The solid cannot be kept: shapes are nested too deeply, at ");
}

TEST(ToolSolidTest, WhatTheModellingLibraryRefusesIsNamed)
{
    // A circle with a negative radius: nothing in the form speaks against it.
    std::string bytes = solidOf("cylinder.3DTool");
    const std::size_t circle = bytes.find("Curves ") + 9; // the byte of its kind
    bytes[circle + 1 + 13 * 8 - 1] = static_cast<char>(bytes[circle + 1 + 13 * 8 - 1] | 0x80);
    const std::string failure = failureOf([&] { ToolSolid::fromBytes(bytes); });
    EXPECT_TRUE(failure.starts_with("GeometryLoadError: The solid cannot be read: ")) << failure;
    EXPECT_GT(failure.size(), 46U);
}

TEST(ToolSolidTest, DamagedBytesAreReadOrRefused)
{
    std::mt19937 random(20240611);
    std::map<bool, int> outcomes;
    for (const char *name : {"cylinder.3DTool", "nurbs_torus.3DTool", "moved_twice.3DTool", "revolved.3DTool"}) {
        const std::string good = solidOf(name);
        for (int i = 0; i < 500; ++i) {
            std::string bad = good;
            for (auto damages = 1 + random() % 3; damages > 0; --damages)
                bad[random() % bad.size()] = static_cast<char>(random());
            const std::string failure = failureOf([&] {
                if (!ToolSolid::fromBytes(bad))
                    throw std::logic_error("a null pointer");
            });
            EXPECT_TRUE(failure == "none" || failure.starts_with("GeometryLoadError: The solid cannot be read: "))
                << failure;
            ++outcomes[failure == "none"];
        }
    }
    EXPECT_EQ(outcomes.size(), 2U) << "both happen";
}

TEST(ToolSolidTest, AGeometryMakesItsSolidOnceForAllItsCopiesAndThreads)
{
    const std::shared_ptr<const ToolSLDGeometry> geometry =
        ToolSLDGeometry::fromSolid(L"id", *ToolSolid::fromBytes(solidOf("rounded_box.3DTool")));
    EXPECT_EQ(geometry->solidBytes(), solidOf("rounded_box.3DTool"));
    const auto copy = ToolSLDGeometry::copy(geometry, L"other");
    std::vector<std::shared_ptr<const TopoDS_Shape>> shapes(8);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < shapes.size(); ++i)
        threads.emplace_back([&, i] { shapes[i] = (i % 2 == 0 ? *geometry : *copy).solid(); });
    for (std::thread &thread : threads)
        thread.join();
    for (const auto &shape : shapes)
        EXPECT_EQ(shape, shapes[0]);
    EXPECT_EQ(count(*shapes[0], TopAbs_FACE), 26);
}
