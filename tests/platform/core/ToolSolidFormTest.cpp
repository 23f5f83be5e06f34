#include "platform/core/ToolSolidForm.h"

#include "support/GeometryFile.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <sstream>
#include <vector>

using namespace TestSupport;
using Varn::ToolSolidForm;

namespace {

// The pieces of the form.
std::string integer(std::uint64_t value, int size = 4)
{
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes.push_back(static_cast<char>(value & 0xFF));
    return bytes;
}
std::string integers(const std::vector<std::int64_t> &values)
{
    std::string bytes;
    for (const std::int64_t value : values)
        bytes += integer(static_cast<std::uint64_t>(value));
    return bytes;
}
std::string byte(int value)
{
    return std::string(1, static_cast<char>(value));
}
std::string real(double value)
{
    return integer(std::bit_cast<std::uint64_t>(value), 8);
}
std::string reals(int count, double value = 1)
{
    std::string bytes;
    for (; count > 0; --count)
        bytes += real(value);
    return bytes;
}

const std::string flags(7, '\0');
const std::string line = byte(1) + reals(6);
const std::string plane = byte(1) + reals(12);
const std::string movement = byte(1) + reals(12);

/// A location that is \a power times location \a factor.
std::string composed(std::int64_t factor, std::int64_t power)
{
    return byte(2) + integers({factor, power, 0});
}

/// Shape \a number, counted from the end of the file, in its place.
std::string place(std::int64_t number, int orientation = 0, std::int64_t location = 0)
{
    return byte(orientation) + integers({number, location});
}
std::string shape(int kind, const std::string &geometry, const std::string &places = {})
{
    return byte(kind) + geometry + flags + places + "*";
}
std::string compound(const std::string &places)
{
    return shape(0, {}, places);
}
std::string vertex(const std::string &representations = {})
{
    return shape(7, reals(4) + representations + byte(0));
}
std::string edge(const std::string &representations = {})
{
    return shape(6, reals(1) + "\1\1" + byte(0) + representations + byte(0));
}
std::string face(const std::string &references = integers({1, 0}), int triangles = 0)
{
    return shape(4, byte(0) + reals(1) + references + byte(triangles));
}

/// A B-spline of degree 1 with two poles, knots from 0 to \a end.
std::string bspline(int coordinates, bool periodic, double end)
{
    return byte(7) + byte(0) + byte(periodic) + integer(1, 2) + integers({2, 2}) + reals(2 * coordinates) + real(0) +
           integer(2) + real(end) + integer(2);
}

struct Form {
    std::vector<std::string> locations = {};
    std::vector<std::string> planeCurves = {};
    std::vector<std::string> curves = {};
    std::vector<std::string> surfaces = {};
    std::vector<std::string> shapes = {vertex()};
    std::string root = place(1);
    std::string polygons = "Polygon3D 0\nPolygonOnTriangulations 0\n";
    std::string triangulations = "Triangulations 0\n";

    std::string bytes() const
    {
        return "\nOpen CASCADE Topology V4, (c) Open Cascade\n" + set("Locations", locations) +
               set("Curve2ds", planeCurves) + set("Curves", curves) + polygons + set("Surfaces", surfaces) +
               triangulations + set("\nTShapes", shapes) + root;
    }

private:
    static std::string set(const std::string &name, const std::vector<std::string> &members)
    {
        std::string bytes = name + " " + std::to_string(members.size()) + "\n";
        for (const std::string &member : members)
            bytes += member;
        return bytes;
    }
};

/// What is wrong, without the place.
std::string faultOf(const std::string &bytes)
{
    const auto fault = ToolSolidForm::findFault(bytes);
    if (!fault)
        return "none";
    EXPECT_NE(fault->find(", at byte "), std::string::npos) << *fault;
    return fault->substr(0, fault->find(", at byte "));
}

struct Row {
    const char *what;
    Form form;
    const char *fault;
};

void check(const std::vector<Row> &rows)
{
    for (const Row &row : rows)
        EXPECT_EQ(faultOf(row.form.bytes()), row.fault) << row.what;
}

std::vector<std::pair<std::string, std::string>> solids()
{
    std::vector<std::pair<std::string, std::string>> all;
    for (const auto &entry : std::filesystem::directory_iterator(SOLIDS_DIR)) {
        std::ostringstream file;
        file << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        all.emplace_back(entry.path().filename().string(), loadGeometry(L"id", file.str())->solidBytes());
    }
    return all;
}

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(ToolSolidFormTest, WhatTheModellingLibraryWritesIsWithoutFault)
{
    const auto all = solids();
    EXPECT_GE(all.size(), 29U);
    for (const auto &[name, bytes] : all)
        EXPECT_EQ(faultOf(bytes), "none") << name;
}

TEST(ToolSolidFormTest, EveryTruncationAndEveryAdditionIsAFault)
{
    for (const auto &[name, bytes] : solids()) {
        for (std::size_t size = 0; size < bytes.size(); ++size)
            ASSERT_NE(faultOf(bytes.substr(0, size)), "none") << name << ' ' << size;
        EXPECT_EQ(faultOf(bytes + '\0'), "there is more behind it") << name;
    }
}

TEST(ToolSolidFormTest, TheFramesOfTheSetsAreExact)
{
    const std::string good = Form().bytes();
    EXPECT_EQ(faultOf(good), "none");
    const auto changed = [&good](const std::string &from, const std::string &to) {
        std::string bytes = good;
        return faultOf(bytes.replace(bytes.find(from), from.size(), to));
    };
    EXPECT_EQ(changed("V4", "V3"), "\"Open CASCADE Topology V4, (c) Open Cascade\" is missing");
    EXPECT_EQ(changed("Locations", "locations"), "\"Locations\" is missing");
    EXPECT_EQ(changed("Curves 0", "Curves x"), "a count is missing");
    EXPECT_EQ(changed("Curves 0", "Curves -1"), "a count is missing");
    EXPECT_EQ(changed("Curves 0", "Curves  0"), "a count is missing");
    EXPECT_EQ(changed("Curves 0", "Curves 0 "), "a line end is missing");
    EXPECT_EQ(changed("Curves 0", "Curves 99999999999999999999999"), "a count is missing");
    EXPECT_EQ(changed("Surfaces 0", "Surfaces 18446744073709551615"), "the end is missing");
    EXPECT_EQ(changed("\n\nTShapes", "\nTShapes"), "\"TShapes\" is missing");
    EXPECT_EQ(changed("Polygon3D 0", "Polygon3D 1"), "\"Polygon3D 0\" is missing");
    EXPECT_EQ(changed("PolygonOnTriangulations 0", "PolygonOnTriangulations 1"),
              "\"PolygonOnTriangulations 0\" is missing");
    EXPECT_EQ(changed("Triangulations 0\n\n", "Triangulations 1\n\n"), "\"Triangulations 0\" is missing");
}

TEST(ToolSolidFormTest, CountsThatTheFileCannotHoldAreRefusedAtOnce)
{
    constexpr std::int64_t most = 0x7FFFFFFF;
    const std::string spline = byte(7) + byte(0) + byte(0) + integer(3, 2);
    const std::string patch = byte(9) + std::string(4, '\0') + integer(3, 2) + integer(3, 2);
    check({
        {"poles", {.curves = {spline + integers({most, 2})}}, "the end is missing"},
        {"knots", {.curves = {spline + integers({2, most}) + reals(6)}}, "the end is missing"},
        {"poles of a surface", {.surfaces = {patch + integers({most, most, 2, 2})}}, "the end is missing"},
        {"a product beyond 32 bits", {.surfaces = {patch + integers({65536, 65536, 2, 2})}}, "the end is missing"},
        {"no poles", {.curves = {spline + integers({0, 2})}}, "a count is too small"},
        {"fewer than no poles", {.curves = {spline + integers({-1, 2})}}, "a count is too small"},
        {"one knot", {.curves = {spline + integers({2, 1})}}, "a count is too small"},
        {"a multiplicity of billions",
         {.curves = {spline + integers({2, 2}) + reals(6) + real(0) + integer(most) + real(1) + integer(4)}},
         "a multiplicity is out of range"},
        {"a multiplicity of 0",
         {.curves = {spline + integers({2, 2}) + reals(6) + real(0) + integer(0) + real(1) + integer(4)}},
         "a multiplicity is out of range"},
        {"a degree of 26", {.curves = {byte(6) + byte(0) + integer(26, 2) + reals(81)}}, "a degree is out of range"},
        {"a degree of 0", {.curves = {byte(6) + byte(0) + integer(0, 2) + reals(3)}}, "a degree is out of range"},
        {"the highest degree", {.curves = {byte(6) + byte(0) + integer(25, 2) + reals(78)}}, "none"},
    });
}

TEST(ToolSolidFormTest, NumbersAreFinite)
{
    for (const double number : {infinity, -infinity, std::nan("")}) {
        check({
            {"movement", {.locations = {byte(1) + reals(11) + real(number)}}, "a number is not finite"},
            {"curve", {.curves = {byte(1) + reals(5) + real(number)}}, "a number is not finite"},
            {"vertex", {.shapes = {shape(7, real(number) + reals(3) + byte(0))}}, "a number is not finite"},
        });
    }
    check({{"the modelling library's own infinity", {.curves = {byte(1) + reals(6, 2e100)}}, "none"}});
}

TEST(ToolSolidFormTest, UnknownKindsAreRefused)
{
    check({
        {"location", {.locations = {byte(3)}}, "a location is of an unknown kind"},
        {"curve 0", {.curves = {byte(0)}}, "a curve or surface is of an unknown kind"},
        {"curve 10", {.curves = {byte(10)}}, "a curve or surface is of an unknown kind"},
        {"plane curve 10", {.planeCurves = {byte(10)}}, "a curve or surface is of an unknown kind"},
        {"surface 12", {.surfaces = {byte(12)}}, "a curve or surface is of an unknown kind"},
        {"shape 8", {.shapes = {byte(8) + flags + "*"}}, "a shape is of an unknown kind"},
        {"vertex on 4", {.shapes = {vertex(byte(4))}}, "a vertex lies on something unknown"},
        {"edge on 5", {.shapes = {edge(byte(5))}}, "an edge lies on something unknown"},
        {"continuity", {.surfaces = {plane}, .shapes = {edge(byte(4) + byte(7))}}, "a continuity is none"},
        {"orientation", {.root = place(1, 4)}, "an orientation is none"},
        {"orientation far off", {.root = place(1, 0xFF)}, "an orientation is none"},
        {"triangles", {.surfaces = {plane}, .shapes = {face(integers({1, 0}), 2)}}, "a face has triangles"},
    });
}

TEST(ToolSolidFormTest, ReferencesLeadToWhatIsThere)
{
    const auto onCurve = [](std::int64_t curve, std::int64_t location = 0) {
        return edge(byte(1) + integers({curve, location}) + reals(2));
    };
    check({
        {"a curve", {.curves = {line}, .shapes = {onCurve(1)}}, "none"},
        {"no curve", {.curves = {line}, .shapes = {onCurve(0)}}, "a reference leads nowhere"},
        {"the curve behind the last", {.curves = {line}, .shapes = {onCurve(2)}}, "a reference leads nowhere"},
        {"a negative curve", {.curves = {line}, .shapes = {onCurve(-1)}}, "a reference leads nowhere"},
        {"a location", {.locations = {movement}, .curves = {line}, .shapes = {onCurve(1, 1)}}, "none"},
        {"no such location",
         {.locations = {movement}, .curves = {line}, .shapes = {onCurve(1, 2)}},
         "a location is missing"},
        {"a negative location", {.curves = {line}, .shapes = {onCurve(1, -1)}}, "a location is missing"},
        {"a surface", {.surfaces = {plane}, .shapes = {face()}}, "none"},
        {"a face of nothing", {.surfaces = {plane}, .shapes = {face(integers({0, 0}))}}, "a reference leads nowhere"},
        {"shape 0", {.root = place(0)}, "a reference leads nowhere"},
        {"shape 2 of 1", {.root = place(2)}, "a reference leads nowhere"},
        {"a negative shape", {.root = place(-1)}, "a reference leads nowhere"},
        {"a shape in itself", {.shapes = {compound(place(1))}}, "a shape refers to a later one"},
        {"a shape before its part", {.shapes = {compound(place(1)), vertex()}}, "a shape refers to a later one"},
        {"a shape behind its part", {.shapes = {vertex(), compound(place(2))}}, "none"},
        {"no shape", {.root = "*"}, "there is no shape"},
        {"none at all", {.shapes = {}, .root = "*"}, "there is no shape"},
    });
}

TEST(ToolSolidFormTest, NestingHasAnEnd)
{
    const auto offsets = [](int count) {
        std::string bytes;
        for (; count > 1; --count)
            bytes += byte(9) + reals(4);
        return bytes + line;
    };
    const auto compounds = [](int count) {
        std::vector<std::string> shapes{compound({})};
        for (int i = 1; i < count; ++i)
            shapes.push_back(compound(place(count - i + 1)));
        return shapes;
    };
    check({
        {"100 curves", {.curves = {offsets(100)}}, "none"},
        {"101 curves", {.curves = {offsets(101)}}, "curves or surfaces are nested too deeply"},
        {"a million curves", {.curves = {offsets(1'000'000)}}, "curves or surfaces are nested too deeply"},
        {"a surface of 100 curves",
         {.surfaces = {byte(6) + reals(3) + offsets(100)}},
         "curves or surfaces are nested too deeply"},
        {"100 shapes", {.shapes = compounds(100)}, "none"},
        {"101 shapes", {.shapes = compounds(101)}, "shapes are nested too deeply"},
    });
}

TEST(ToolSolidFormTest, SharingDoesNotMultiplyWithoutBound)
{
    // Each compound holds the one before twice.
    const auto doubled = [](int levels) {
        std::vector<std::string> shapes{vertex()};
        for (int i = 1; i < levels; ++i)
            shapes.push_back(compound(place(levels - i + 1) + place(levels - i + 1)));
        return shapes;
    };
    const auto squares = [](int count) {
        std::vector<std::string> locations{movement};
        for (int i = 1; i < count; ++i)
            locations.push_back(composed(i, 2));
        return locations;
    };
    check({
        {"8 million vertices and what holds them", {.shapes = doubled(23)}, "none"},
        {"twice that", {.shapes = doubled(24)}, "there are too many shapes"},
        {"as many as atoms", {.shapes = doubled(99)}, "there are too many shapes"},
        {"512 movements", {.locations = squares(10)}, "none"},
        {"1024 movements", {.locations = squares(11)}, "a location has too many steps"},
        {"a high power", {.locations = {movement, composed(1, 1001)}}, "a location has too many steps"},
        {"a low power", {.locations = {movement, composed(1, -1001)}}, "a location has too many steps"},
        {"the lowest power", {.locations = {movement, composed(1, -0x80000000LL)}}, "a location has too many steps"},
        {"an inverse", {.locations = {movement, composed(1, -1)}}, "none"},
        {"a location of itself", {.locations = {composed(1, 1)}}, "a location is missing"},
    });
}

TEST(ToolSolidFormTest, AParameterStaysNearAPeriodicCurve)
{
    const auto onCurve = [](double first, double last) {
        return std::vector{edge(byte(1) + integers({1, 0}) + real(first) + real(last))};
    };
    const auto onSurface = [](double last) {
        return std::vector{edge(byte(2) + integers({1, 1, 0}) + real(0) + real(last))};
    };
    const auto onSeam = [](double last) {
        return std::vector{edge(byte(3) + integers({1, 2}) + byte(0) + integers({1, 0}) + real(0) + real(last))};
    };
    const std::string circular = bspline(3, true, 2);
    const std::string circular2d = bspline(2, true, 2);
    const std::string line2d = byte(1) + reals(4);
    const std::string trimmed = byte(8) + real(0) + real(1) + circular;
    const std::string offset = byte(9) + reals(4) + circular;
    constexpr const char *far = "a parameter is too many periods away";
    check({
        {"1000 periods", {.curves = {circular}, .shapes = onCurve(-2000, 2000)}, "none"},
        {"more", {.curves = {circular}, .shapes = onCurve(0, 2001)}, far},
        {"more the other way", {.curves = {circular}, .shapes = onCurve(-2001, 0)}, far},
        {"far on an open curve", {.curves = {bspline(3, false, 2)}, .shapes = onCurve(-1e9, 1e9)}, "none"},
        {"trimmed", {.curves = {trimmed}, .shapes = onCurve(0, 2001)}, far},
        {"trimmed far away", {.curves = {byte(8) + real(0) + real(1e10) + circular}}, far},
        {"offset", {.curves = {offset}, .shapes = onCurve(0, 2001)}, far},
        {"on a surface", {.planeCurves = {circular2d}, .surfaces = {plane}, .shapes = onSurface(2001)}, far},
        {"near on a surface", {.planeCurves = {circular2d}, .surfaces = {plane}, .shapes = onSurface(2)}, "none"},
        {"the second of a seam",
         {.planeCurves = {line2d, circular2d}, .surfaces = {plane}, .shapes = onSeam(2001)},
         far},
        {"a seam", {.planeCurves = {line2d, circular2d}, .surfaces = {plane}, .shapes = onSeam(2)}, "none"},
        {"a vertex", {.curves = {circular}, .shapes = {vertex(byte(1) + real(2001) + integers({1, 0}))}}, far},
        {"a vertex on a plane curve",
         {.planeCurves = {circular2d}, .surfaces = {plane}, .shapes = {vertex(byte(2) + real(2001) + integers({1}))}},
         far},
        {"knots that stand still", {.curves = {bspline(3, true, 0)}}, "knots do not ascend"},
        {"knots that go back", {.curves = {bspline(3, false, -1)}}, "knots do not ascend"},
    });
}

TEST(ToolSolidFormTest, TheFaultSaysWhere)
{
    const std::string bytes = Form{.curves = {byte(10)}}.bytes();
    EXPECT_EQ(ToolSolidForm::findFault(bytes),
              "a curve or surface is of an unknown kind, at byte " + std::to_string(bytes.find("Curves 1\n") + 10));
}
