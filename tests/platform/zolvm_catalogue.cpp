// zolvm_catalogue.cpp - the rows come from the library's own header.
#include "zolvm_catalogue.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <xmmintrin.h>

Traces lastTraces;
bool harnessModes = false;
unsigned flagsBefore = 0;
bool trapping = false;

namespace {

constexpr unsigned flagBits = 0x3f;

// Calls with the flags asked for and keeps what is left of them.
template <class Call>
ZolStatus traced(Call const& call) {
    unsigned short outerWord = 0;
    unsigned short after87 = 0;
    unsigned short x87 = 0;
    asm volatile("fnclex\n\tfnstcw %0" : "=m"(outerWord) : : "memory");
    unsigned const outer = _mm_getcsr() & ~flagBits;
    unsigned short const word =
        harnessModes ? static_cast<unsigned short>((outerWord & 0xfcfbU) | 0x0200U) : outerWord;
    unsigned const allButInexact = 0xf80;
    unsigned const csr =
        ((harnessModes ? outer | 0x8000U : outer) | flagsBefore) & ~(trapping ? allButInexact : 0);
    asm volatile("fldcw %0" : : "m"(word));
    _mm_setcsr(csr);
    ZolStatus const status = call();
    unsigned const after = _mm_getcsr();
    asm volatile("fnstsw %0\n\tfnstcw %1" : "=m"(x87), "=m"(after87) : : "memory");
    asm volatile("fnclex\n\tfldcw %0" : : "m"(outerWord));
    _mm_setcsr(outer);
    lastTraces = {after & flagBits, x87 & flagBits,
                  ((after ^ csr) & ~flagBits) | static_cast<unsigned>(word ^ after87), false};
    return status;
}

template <class T>
constexpr bool isComplex = requires(T z) {
    z.re;
};
template <class T>
T make(std::complex<double> z) {
    if constexpr (isComplex<T>) {
        using Real = decltype(T::re);
        return {static_cast<Real>(z.real()), static_cast<Real>(z.imag())};
    } else {
        return static_cast<T>(z.real());
    }
}
template <class T>
std::complex<double> read(T x) {
    if constexpr (isComplex<T>) {
        return {static_cast<double>(x.re), static_cast<double>(x.im)};
    } else {
        return static_cast<double>(x);
    }
}

// Arrays whose first element stands extra elements behind an aligned place.
template <class T>
std::vector<T> arrayOf(Numbers const& numbers, std::size_t extra) {
    std::vector<T> array(extra + numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        array[extra + i] = make<T>(numbers[i]);
    }
    return array;
}

// Hides the shape: sources, destinations, length. A pointer, so that there is a row() for each pair
// of types and not for each function.
template <class S, class D>
using Call = ZolStatus (*)(S const*, S const*, D*, D*, int);

template <class S, class D>
Function row(char const* name, int sources, int results, bool byValue, Call<S, D> call) {
    Function function;
    function.name = name;
    std::size_t const bar = function.name.find('_');
    function.family = function.name.substr(4, bar - 4);
    std::size_t const second = function.name.find('_', bar + 1);
    function.accuracy = second == std::string::npos ? "" : function.name.substr(second + 1);
    function.single = function.name.find("_32f") != std::string::npos;
    function.complexSource = isComplex<S>;
    function.complexResult = isComplex<D>;
    function.sources = sources;
    function.results = results;
    function.byValue = byValue;
    function.call = [=](Numbers const& a, Numbers const& b, Numbers& out, int extra, bool inPlace) {
        std::size_t const skip = static_cast<std::size_t>(extra);
        std::vector<S> first = arrayOf<S>(a, skip);
        std::vector<S> const second2 = arrayOf<S>(sources == 2 ? b : a, skip);
        std::vector<D> dest1(a.size() + skip + 1);
        std::vector<D> dest2(a.size() + skip + 1);
        std::memset(&dest1.back(), 0x5a, sizeof(D));
        dest2.back() = dest1.back();
        D const guard = dest1.back();
        D* to = dest1.data() + skip;
        if constexpr (std::is_same_v<S, D>) {
            to = inPlace ? first.data() + skip : to;
        }
        ZolStatus const status = traced([&] {
            return call(first.data() + skip, second2.data() + skip, to, dest2.data() + skip,
                        static_cast<int>(a.size()));
        });
        lastTraces.wroteBehind = std::memcmp(&guard, &dest1.back(), sizeof(D)) != 0 ||
                                 std::memcmp(&guard, &dest2.back(), sizeof(D)) != 0;
        out.clear();
        for (std::size_t i = 0; i < a.size(); ++i) {
            out.push_back(read<D>(to[i]));
        }
        for (std::size_t i = 0; results == 2 && i < a.size(); ++i) {
            out.push_back(read<D>(dest2[skip + i]));
        }
        return status;
    };
    function.callBadly = [=](unsigned nulls, int length) {
        S source[2] = {};
        D dest[2] = {};
        S const* const first = (nulls & 1U) != 0 ? nullptr : source;
        S const* const second2 = (nulls & 2U) != 0 && !byValue ? nullptr : source;
        D* const to1 = (nulls & 4U) != 0 ? nullptr : dest;
        D* const to2 = (nulls & 8U) != 0 ? nullptr : dest + 1;
        return call(first, second2, to1, to2, length);
    };
    return function;
}

// By shape: number of sources, of results, whether the second source is a value; the call.
#define SHAPE_UNARY(name) 1, 1, false, name(a, d, n)
#define SHAPE_BINARY(name) 2, 1, false, name(a, b, d, n)
#define SHAPE_SCALAR(name) 2, 1, true, name(a, *b, d, n)
#define SHAPE_TWO_RESULTS(name) 1, 2, false, name(a, d, e, n)
#define ROW_OF(name, S, D, ...) ROW_OF_SHAPE(name, S, D, __VA_ARGS__)
#define ROW_OF_SHAPE(name, S, D, sources, results, byValue, call)                                  \
    rows.push_back(                                                                                \
        row<S, D>(#name, sources, results, byValue,                                                \
                  []([[maybe_unused]] S const* a, [[maybe_unused]] S const* b,                     \
                     [[maybe_unused]] D* d, [[maybe_unused]] D* e, int n) { return call; }));
#define ROW(shape, name, S, D, family, kind) ROW_OF(name, S, D, SHAPE_##shape(name))

// Work intervals of real rows: families, with the letter of their type where it matters. What has a
// second source takes it from the second interval.
struct WorkRow {
    char const* families; // between blanks
    Interval first;
    Interval second;
};
WorkRow const works[] = {
    {" Inv Div ", {1e-4, 1e4}, {1e-4, 1e4}},
    {" Sqrt ", {0, 1e4}, {}},
    {" InvSqrt InvCbrt Pow3o2 Pow2o3 Ln Log10 ", {0.1, 1e4}, {}},
    {" Tan ", {-1000, 1000}, {}},
    {" sPow sPowx ", {0.1, 10}, {0.1, 10}},
    {" dPow ", {5, 100}, {5, 100}},
    {" dPowx ", {5, 100}, {5, 10}},
    {" sExp sCosh sSinh ", {-87, 87}, {}},
    {" dExp ", {-707, 707}, {}},
    {" dCosh dSinh ", {-675, 675}, {}},
    {" Acos Asin ", {-1, 1}, {}},
    {" Atan ", {-5, 5}, {}},
    {" sTanh ", {-9, 9}, {}},
    {" dTanh ", {-19, 19}, {}},
    {" sAcosh sAsinh ", {4, 1e19}, {}},
    {" dAcosh ", {1.001, 1e154}, {}},
    {" dAsinh ", {0.002, 1e154}, {}},
    {" sAtanh ", {0.77, 0.99999}, {}},
    {" dAtanh ", {0.005, 0.99999}, {}},
    {" sErf ", {0.126, 4}, {}},
    {" dErf ", {0.5, 5.9}, {}},
    {" sErfc ", {-3, 9}, {}},
    {" dErfc ", {-5, 25}, {}},
    {" ErfInv ", {-0.99999, 0.99999}, {}},
    {" ErfcInv ", {0.00001, 1.99999}, {}},
    {" sCdfNorm ", {-8, 5}, {}},
    {" dCdfNorm ", {-32, 8}, {}},
    {" CdfNormInv ", {0.00001, 0.99999}, {}},
    {" sExpm1 ", {-70, 70}, {}},
    {" dExpm1 ", {-500, 500}, {}},
    {" Log1p ", {1, 999}, {}},
};

} // namespace

std::vector<Function> const& allFunctions() {
    static std::vector<Function> const all = [] {
        std::vector<Function> rows;
        ZOLVM_FUNCTIONS(ROW)
        return rows;
    }();
    return all;
}

std::vector<Function> rowsOf(std::string const& family, bool single, bool complexSource) {
    std::vector<Function> rows;
    std::ranges::copy_if(allFunctions(), std::back_inserter(rows), [&](Function const& one) {
        return one.family == family && one.single == single && one.complexSource == complexSource;
    });
    return rows;
}

Work workOf(Function const& function) {
    Interval const wide{-1e4, 1e4};
    if (function.complexSource) {
        bool const wideFamily = function.isOneOf(" Abs Arg Conj Add Sub Mul MulByConj Div ");
        Interval const narrow{0.01, 20};
        bool const product = function.isOneOf(" Mul Div MulByConj ");
        if (product && (function.accuracy == "A11" || function.accuracy == "A26")) {
            return {{1e3, 1e4}, {1, 10}, {1, 10}, {1, 10}};
        }
        return wideFamily ? Work{wide, wide, wide, wide} : Work{narrow, narrow, narrow, narrow};
    }
    for (std::string const letter : {"", function.single ? "s" : "d"}) {
        for (auto const& [families, first, second] : works) {
            if (function.isOneOf(families, letter)) {
                return {first, second, {}, {}};
            }
        }
    }
    return {wide, wide, {}, {}};
}

std::vector<Zol64u> runnablePaths() {
    Zol64u features = 0;
    zolGetCpuFeatures(&features, nullptr);
    std::vector<Zol64u> paths = {0x7};
    for (Zol64u const mask : {0x81dfULL, 0x73081dfULL}) {
        if ((mask & ~features & ~Zol64u{zolCPUID_MOVBE}) == 0) {
            paths.push_back(mask);
        }
    }
    return paths;
}

Numbers workNumbers(Function const& function, bool second, std::size_t count) {
    Work const work = workOf(function);
    std::mt19937 random(second ? 11 : 5);
    auto const draw = [&](Interval interval) {
        return std::uniform_real_distribution<>(interval.low, interval.high)(random);
    };
    Numbers numbers;
    for (std::size_t i = 0; i < count; ++i) {
        double const re = draw(second ? work.second : work.first);
        double const im = draw(second ? work.secondImaginary : work.firstImaginary);
        numbers.emplace_back(re, im);
    }
    return numbers;
}

bool sameNumber(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}
bool same(std::complex<double> a, std::complex<double> b) {
    return sameNumber(a.real(), b.real()) && sameNumber(a.imag(), b.imag());
}
