#include "platform/core/ToolSolidForm.h"

#include <QtEndian>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace Varn {

namespace {

constexpr std::string_view firstLine = "\nOpen CASCADE Topology V4, (c) Open Cascade\n";
constexpr int highestDegree = 25;    // of a Bezier or B-spline, as the modelling library has it
constexpr double mostPeriods = 1000; // between a parameter and a periodic curve's first knot

/// What is wrong; caught within this file.
struct Fault {
    std::string text;
};

/// A kind of curve or surface, by the byte that stands in front of it.
struct GeometryRow {
    enum Rest { Nothing, Bezier, BSpline, Curve, Trimmed, Offset };

    int reals; ///< that stand first
    Rest rest; ///< what follows them; Trimmed and Offset: another one of the set
};

using Row = GeometryRow;
constexpr int mostReals = 14;

// clang-format off
constexpr GeometryRow planeCurves[] = { // reals are coordinates in the plane of a surface
    { 4, Row::Nothing }, // 1 line: point, direction
    { 7, Row::Nothing }, // 2 circle: center, two axes, radius
    { 8, Row::Nothing }, // 3 ellipse: center, two axes, two radii
    { 7, Row::Nothing }, // 4 parabola: origin, two axes, focal length
    { 8, Row::Nothing }, // 5 hyperbola: center, two axes, two radii
    { 0, Row::Bezier  }, // 6
    { 0, Row::BSpline }, // 7
    { 2, Row::Trimmed }, // 8 trimmed: two parameters
    { 1, Row::Offset  }, // 9 offset: distance
};
constexpr GeometryRow curves[] = {
    {  6, Row::Nothing }, // 1 line: point, direction
    { 13, Row::Nothing }, // 2 circle: center, three axes, radius
    { 14, Row::Nothing }, // 3 ellipse: center, three axes, two radii
    { 13, Row::Nothing }, // 4 parabola: origin, three axes, focal length
    { 14, Row::Nothing }, // 5 hyperbola: center, three axes, two radii
    {  0, Row::Bezier  }, // 6
    {  0, Row::BSpline }, // 7
    {  2, Row::Trimmed }, // 8 trimmed: two parameters
    {  4, Row::Offset  }, // 9 offset: distance, direction
};
constexpr GeometryRow surfaces[] = {
    { 12, Row::Nothing }, //  1 plane: origin, three axes
    { 13, Row::Nothing }, //  2 cylinder: the same and a radius
    { 14, Row::Nothing }, //  3 cone: the same, radius, half angle
    { 13, Row::Nothing }, //  4 sphere: the same and a radius
    { 14, Row::Nothing }, //  5 torus: the same and two radii
    {  3, Row::Curve   }, //  6 extrusion: direction
    {  6, Row::Curve   }, //  7 revolution: point and direction of the axis
    {  0, Row::Bezier  }, //  8
    {  0, Row::BSpline }, //  9
    {  4, Row::Trimmed }, // 10 trimmed: four parameters
    {  1, Row::Offset  }, // 11 offset: distance
};
// clang-format on

constexpr bool fits(std::span<const GeometryRow> rows)
{
    return std::ranges::all_of(rows, [](const Row &row) { return row.reals <= mostReals; });
}
static_assert(fits(planeCurves) && fits(curves) && fits(surfaces));

/// A set of curves or surfaces: its rows, and the coordinates of a pole. A pole of a surface has two directions.
struct GeometrySet {
    std::span<const GeometryRow> rows;
    int coordinates;
    int directions;
};

constexpr GeometrySet planeCurveSet{planeCurves, 2, 1};
constexpr GeometrySet curveSet{curves, 3, 1};
constexpr GeometrySet surfaceSet{surfaces, 3, 2};

/// The parameters of a curve: those of a periodic B-spline repeat. The modelling library goes there period by period.
struct Domain {
    double first = 0;
    double period = 0; // 0: does not repeat

    bool isNear(double parameter) const { return period == 0 || std::abs(parameter - first) <= mostPeriods * period; }
};

/// Walks through the bytes as the modelling library will.
class Walk
{
public:
    explicit Walk(std::string_view bytes) : m_bytes(bytes) {}

    void run()
    {
        expect(firstLine);
        readLocations();
        m_planeCurves = readGeometries("Curve2ds ", planeCurveSet);
        m_curves = readGeometries("Curves ", curveSet);
        expect("Polygon3D 0\n");
        expect("PolygonOnTriangulations 0\n");
        m_surfaces = readGeometries("Surfaces ", surfaceSet).size();
        expect("Triangulations 0\n");
        readShapes();
        require(readPlace() != nullptr, "there is no shape");
        require(m_at == m_bytes.size(), "there is more behind it");
    }

private:
    struct ShapeSize {
        long occurrences;
        int nesting;
    };

    [[noreturn]] void fail(const std::string &what) const { throw Fault{what + ", at byte " + std::to_string(m_at)}; }
    void require(bool good, const char *what) const
    {
        if (!good)
            fail(what);
    }

    void skip(std::uint64_t count)
    {
        require(count <= m_bytes.size() - m_at, "the end is missing");
        m_at += static_cast<std::size_t>(count);
    }
    void expect(std::string_view text)
    {
        if (!m_bytes.substr(m_at).starts_with(text)) {
            const std::size_t begin = text.find_first_not_of('\n');
            const std::size_t end = text.find_last_not_of(" \n");
            require(begin < text.size(), "a line end is missing");
            fail("\"" + std::string(text.substr(begin, end + 1 - begin)) + "\" is missing");
        }
        m_at += text.size();
    }

    template <typename Number>
    Number take()
    {
        const std::size_t from = m_at;
        skip(sizeof(Number));
        return qFromLittleEndian<Number>(m_bytes.data() + from);
    }
    int takeByte() { return take<std::uint8_t>(); }
    bool takeBool() { return takeByte() != 0; }
    double takeReal()
    {
        const auto number = take<double>();
        require(std::isfinite(number), "a number is not finite");
        return number;
    }
    void takeReals(std::uint64_t count)
    {
        require(count <= (m_bytes.size() - m_at) / sizeof(double), "the end is missing");
        for (; count > 0; --count)
            takeReal();
    }
    std::size_t takeCount(int least)
    {
        const auto count = take<std::int32_t>();
        require(count >= least, "a count is too small");
        return static_cast<std::size_t>(count);
    }
    /// The number of something that is one of \a count, from 1 on.
    std::size_t takeIndex(std::size_t count)
    {
        const auto index = take<std::int32_t>();
        require(index >= 1 && static_cast<std::size_t>(index) <= count, "a reference leads nowhere");
        return static_cast<std::size_t>(index);
    }
    const Domain &takeCurve(const std::vector<Domain> &all) { return all[takeIndex(all.size()) - 1]; }
    void requireNear(const Domain &domain, double parameter) const
    {
        require(domain.isNear(parameter), "a parameter is too many periods away");
    }
    void takeRange(const Domain &domain)
    {
        requireNear(domain, takeReal());
        requireNear(domain, takeReal());
    }
    void takeLocation() // 0 is no movement
    {
        const auto index = take<std::int32_t>();
        require(index >= 0 && static_cast<std::size_t>(index) <= m_locationSteps.size(), "a location is missing");
    }

    /// The count behind the name of a set. Whatever is counted takes a byte at least.
    std::size_t takeSetSize(std::string_view name)
    {
        expect(name);
        std::size_t count = 0;
        const char *const begin = m_bytes.data() + m_at;
        const auto [end, error] = std::from_chars(begin, m_bytes.data() + m_bytes.size(), count);
        require(error == std::errc(), "a count is missing");
        m_at += static_cast<std::size_t>(end - begin);
        expect("\n");
        require(count <= m_bytes.size() - m_at, "the end is missing");
        return count;
    }

    void readLocations()
    {
        constexpr int elementary = 1;
        constexpr int composed = 2;
        const std::size_t count = takeSetSize("Locations ");
        while (m_locationSteps.size() < count) {
            const int kind = takeByte();
            require(kind == elementary || kind == composed, "a location is of an unknown kind");
            if (kind == elementary)
                takeReals(12); // three rows of a matrix
            m_locationSteps.push_back(kind == elementary ? 1 : readComposition());
        }
    }

    /// Powers of earlier locations up to a 0; gives the elementary movements of all.
    int readComposition()
    {
        std::int64_t steps = 0;
        for (;;) {
            const auto factor = take<std::int32_t>();
            if (factor == 0)
                return static_cast<int>(steps);
            require(factor > 0 && static_cast<std::size_t>(factor) <= m_locationSteps.size(), "a location is missing");
            const std::int64_t power = take<std::int32_t>();
            steps += std::abs(power) * m_locationSteps[static_cast<std::size_t>(factor) - 1];
            require(steps <= ToolSolidForm::mostLocationSteps, "a location has too many steps");
        }
    }

    std::vector<Domain> readGeometries(std::string_view name, const GeometrySet &set)
    {
        std::vector<Domain> domains;
        const std::size_t count = takeSetSize(name);
        while (domains.size() < count)
            domains.push_back(readGeometry(set, 1));
        return domains;
    }

    Domain readGeometry(const GeometrySet &set, int nesting)
    {
        require(nesting <= ToolSolidForm::mostNesting, "curves or surfaces are nested too deeply");
        const int kind = takeByte();
        require(kind >= 1 && kind <= static_cast<int>(set.rows.size()), "a curve or surface is of an unknown kind");
        const GeometryRow &row = set.rows[static_cast<std::size_t>(kind - 1)];
        double reals[mostReals] = {};
        for (int i = 0; i < row.reals; ++i)
            reals[i] = takeReal();
        switch (row.rest) {
        case Row::Nothing:
            break;
        case Row::Bezier:
            readBezier(set);
            break;
        case Row::BSpline:
            return readBSpline(set);
        case Row::Curve:
            readGeometry(curveSet, nesting + 1);
            break;
        case Row::Offset:
            return readGeometry(set, nesting + 1);
        case Row::Trimmed:
            const Domain domain = readGeometry(set, nesting + 1);
            requireNear(domain, reals[0]); // a surface has no domain
            requireNear(domain, reals[1]);
            return domain;
        }
        return {};
    }

    bool takeRational(const GeometrySet &set)
    {
        bool rational = false;
        for (int i = 0; i < set.directions; ++i)
            rational |= takeBool();
        return rational;
    }
    int takeDegree()
    {
        const int degree = take<std::uint16_t>();
        require(degree >= 1 && degree <= highestDegree, "a degree is out of range");
        return degree;
    }
    void takePoles(std::uint64_t count, const GeometrySet &set, bool rational)
    {
        require(count <= m_bytes.size(), "the end is missing"); // and the product below is one
        takeReals(count * static_cast<std::uint64_t>(set.coordinates + (rational ? 1 : 0)));
    }

    void readBezier(const GeometrySet &set)
    {
        const bool rational = takeRational(set);
        std::uint64_t poles = 1;
        for (int i = 0; i < set.directions; ++i)
            poles *= static_cast<std::uint64_t>(takeDegree() + 1);
        takePoles(poles, set, rational);
    }

    Domain readBSpline(const GeometrySet &set)
    {
        const bool rational = takeRational(set);
        bool periodic = false;
        for (int i = 0; i < set.directions; ++i)
            periodic |= takeBool();
        int degrees[2] = {};
        std::size_t knots[2] = {};
        std::uint64_t poles = 1;
        for (int i = 0; i < set.directions; ++i)
            degrees[i] = takeDegree();
        for (int i = 0; i < set.directions; ++i)
            poles *= takeCount(2);
        for (int i = 0; i < set.directions; ++i)
            knots[i] = takeCount(2);
        takePoles(poles, set, rational);
        Domain domain;
        for (int i = 0; i < set.directions; ++i)
            domain = readKnots(knots[i], degrees[i]);
        return periodic && set.directions == 1 ? domain : Domain();
    }

    Domain readKnots(std::size_t count, int degree)
    {
        require(count <= (m_bytes.size() - m_at) / (sizeof(double) + sizeof(std::int32_t)), "the end is missing");
        Domain domain;
        double last = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double knot = takeReal();
            require(i == 0 || knot > last, "knots do not ascend");
            domain.first = i == 0 ? knot : domain.first;
            last = knot;
            const auto multiplicity = take<std::int32_t>();
            require(multiplicity >= 1 && multiplicity <= degree + 1, "a multiplicity is out of range");
        }
        domain.period = last - domain.first;
        return domain;
    }

    void readShapes()
    {
        const std::size_t count = takeSetSize("\nTShapes ");
        m_shapeCount = count;
        while (m_shapes.size() < count) {
            constexpr int face = 4;
            constexpr int edge = 6;
            constexpr int vertex = 7;
            const int kind = takeByte(); // from 0, compound, to 7, vertex
            require(kind <= vertex, "a shape is of an unknown kind");
            if (kind == face)
                readFace();
            else if (kind == edge)
                readEdge();
            else if (kind == vertex)
                readVertex();
            skip(7); // free, modified, checked, orientable, closed, infinite, convex
            readParts();
        }
    }

    /// The shapes that the next one is made of.
    void readParts()
    {
        ShapeSize whole{1, 1};
        while (const ShapeSize *part = readPlace()) {
            whole.occurrences += part->occurrences;
            whole.nesting = std::max(whole.nesting, part->nesting + 1);
            require(whole.occurrences <= ToolSolidForm::mostOccurrences, "there are too many shapes");
            require(whole.nesting <= ToolSolidForm::mostNesting, "shapes are nested too deeply");
        }
        m_shapes.push_back(whole);
    }

    /// A shape in its place within another: orientation, number, location. Null for the '*' behind the last. Numbers go
    /// down, so that a shape stands behind those that it is made of.
    const ShapeSize *readPlace()
    {
        const int orientation = takeByte();
        if (orientation == '*')
            return nullptr;
        require(orientation <= 3, "an orientation is none");
        const std::size_t position = m_shapeCount - takeIndex(m_shapeCount); // from 0, in the order of the file
        require(position < m_shapes.size(), "a shape refers to a later one");
        takeLocation();
        return &m_shapes[position];
    }

    void readFace()
    {
        constexpr int mostWithoutTriangles = 1;
        takeBool();   // its surface bounds it
        takeReals(1); // tolerance
        takeIndex(m_surfaces);
        takeLocation();
        require(takeByte() <= mostWithoutTriangles, "a face has triangles");
    }

    void readEdge()
    {
        takeReals(1); // tolerance
        skip(3);      // same parameter, same range, degenerated
        for (;;) {
            switch (takeByte()) {
            case 0:
                return;
            case 1: { // curve
                const Domain &domain = takeCurve(m_curves);
                takeLocation();
                takeRange(domain);
                break;
            }
            case 2: // curve in the plane of a surface
                readOnSurface(1);
                break;
            case 3: // on the seam of a closed surface: two of them
                readOnSurface(2);
                break;
            case 4: // how two surfaces meet
                readContinuity();
                takeIndex(m_surfaces);
                takeLocation();
                takeIndex(m_surfaces);
                takeLocation();
                break;
            default:
                fail("an edge lies on something unknown");
            }
        }
    }

    void readContinuity() { require(takeByte() <= 6, "a continuity is none"); }

    void readOnSurface(int curveCount)
    {
        Domain domains[2];
        for (int i = 0; i < curveCount; ++i)
            domains[i] = takeCurve(m_planeCurves);
        if (curveCount == 2)
            readContinuity();
        takeIndex(m_surfaces);
        takeLocation();
        for (const double parameter : {takeReal(), takeReal()}) {
            requireNear(domains[0], parameter);
            requireNear(domains[1], parameter);
        }
    }

    void readVertex()
    {
        takeReals(4); // tolerance, point
        for (;;) {
            const int kind = takeByte();
            if (kind == 0)
                return;
            require(kind <= 3, "a vertex lies on something unknown");
            const double parameter = takeReal();
            if (kind == 1) {
                requireNear(takeCurve(m_curves), parameter);
            } else if (kind == 2) {
                requireNear(takeCurve(m_planeCurves), parameter);
                takeIndex(m_surfaces);
            } else {
                takeReal();
                takeIndex(m_surfaces);
            }
            takeLocation();
        }
    }

    std::string_view m_bytes;
    std::size_t m_at = 0;
    std::vector<int> m_locationSteps; // of each location
    std::vector<Domain> m_planeCurves;
    std::vector<Domain> m_curves;
    std::size_t m_surfaces = 0;
    std::size_t m_shapeCount = 0;
    std::vector<ShapeSize> m_shapes; // those that are read, in the order of the file
};

} // namespace

std::optional<std::string> ToolSolidForm::findFault(std::string_view bytes)
{
    try {
        Walk(bytes).run();
    } catch (const Fault &fault) {
        return fault.text;
    }
    return std::nullopt;
}

} // namespace Varn
