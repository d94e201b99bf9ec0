// zolvm_reference.cpp - real functions by MPFR, complex ones by their textbook formulas with enough
// digits to spare for every cancellation.
#include "zolvm_reference.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <mpfr.h>

namespace {

class Big {
public:
    Big(double x = 0) {
        mpfr_init(number);
        mpfr_set_d(number, x, MPFR_RNDN);
    }
    Big(Big const& other) : Big() { mpfr_set(number, other.number, MPFR_RNDN); }
    ~Big() { mpfr_clear(number); }
    Big& operator=(Big const& other) {
        mpfr_set(number, other.number, MPFR_RNDN);
        return *this;
    }

    Digits digits() const {
        double const high = mpfr_get_d(number, MPFR_RNDN);
        Big rest;
        mpfr_sub_d(rest.number, number, high, MPFR_RNDN);
        return {high, mpfr_get_d(rest.number, MPFR_RNDN)};
    }

    mpfr_t number;
};

using Unary = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
using Binary = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t);

Big apply(Unary function, Big const& x) {
    Big result;
    function(result.number, x.number, MPFR_RNDN);
    return result;
}
Big apply(Binary function, Big const& x, Big const& y) {
    Big result;
    function(result.number, x.number, y.number, MPFR_RNDN);
    return result;
}
Big operator+(Big const& x, Big const& y) { return apply(mpfr_add, x, y); }
Big operator-(Big const& x, Big const& y) { return apply(mpfr_sub, x, y); }
Big operator*(Big const& x, Big const& y) { return apply(mpfr_mul, x, y); }
Big operator/(Big const& x, Big const& y) { return apply(mpfr_div, x, y); }
Big operator-(Big const& x) { return Big(0) - x; }
Big root(Big const& x) { return apply(mpfr_sqrt, x); }

struct Complex {
    Big re;
    Big im;
};
Complex operator+(Complex const& z, Complex const& w) { return {z.re + w.re, z.im + w.im}; }
Complex operator-(Complex const& z, Complex const& w) { return {z.re - w.re, z.im - w.im}; }
Complex operator*(Complex const& z, Complex const& w) {
    return {z.re * w.re - z.im * w.im, z.re * w.im + z.im * w.re};
}
Complex conjugate(Complex const& z) { return {z.re, -z.im}; }
Big norm(Complex const& z) { return apply(mpfr_hypot, z.re, z.im); }
Complex operator/(Complex const& z, Complex const& w) {
    Big const square = w.re * w.re + w.im * w.im;
    Complex const product = z * conjugate(w);
    return {product.re / square, product.im / square};
}
Complex log(Complex const& z) { return {apply(mpfr_log, norm(z)), apply(mpfr_atan2, z.im, z.re)}; }
Complex exp(Complex const& z) {
    Big const size = apply(mpfr_exp, z.re);
    return {size * apply(mpfr_cos, z.im), size * apply(mpfr_sin, z.im)};
}
Complex const one{Big(1), Big(0)};
Complex const i{Big(0), Big(1)};
Complex const half{Big(0.5), Big(0)};

Complex sqrt(Complex const& z) { return exp(half * log(z)); }
Complex asinOf(Complex const& z) { return conjugate(i) * log(i * z + sqrt(one - z * z)); }
Complex acosOf(Complex const& z) {
    Complex const asin = asinOf(z);
    return {apply(mpfr_acos, Big(0)) - asin.re, -asin.im};
}
Complex sinhOf(Complex const& z) { return half * (exp(z) - exp(Complex{} - z)); }
Complex coshOf(Complex const& z) { return half * (exp(z) + exp(Complex{} - z)); }
Complex atanhOf(Complex const& z) { return half * (log(one + z) - log(one - z)); }

// A step of the third order from x towards what has this error in erf; true if it was tiny.
bool inverseStep(Big& x, Big const& error) {
    Big const halfRootPi = root(apply(mpfr_acos, Big(-1))) / 2.0;
    Big const delta = error * halfRootPi * apply(mpfr_exp, x * x);
    x = x - delta / (Big(1) + x * delta);
    return std::fabs(delta.digits().high) < 1e-40;
}

// The x with erfc(x) = right and erfc(-x) = left = 2 - right. It starts where the C library's erfc,
// which falls, comes to the smaller one.
Big erfcInverse(Big const& right, Big const& left) {
    bool const negative = mpfr_less_p(left.number, right.number) != 0;
    Big const target = negative ? left : right;
    double const tail = target.digits().high;
    if (!(tail > 0)) {
        Big const end(tail == 0 ? HUGE_VAL : NAN);
        return negative ? -end : end;
    }
    double low = 0;
    double high = 28;
    for (int halving = 0; halving < 30; ++halving) {
        double const middle = 0.5 * (low + high);
        (std::erfc(middle) > tail ? low : high) = middle;
    }
    Big x(low);
    while (!inverseStep(x, target - apply(mpfr_erfc, x))) {
    }
    return negative ? -x : x;
}

std::map<std::string, Unary> const unaries = {
    {"Acos", mpfr_acos},        {"Acosh", mpfr_acosh},      {"Asin", mpfr_asin},
    {"Asinh", mpfr_asinh},      {"Atan", mpfr_atan},        {"Atanh", mpfr_atanh},
    {"Cbrt", mpfr_cbrt},        {"Cos", mpfr_cos},          {"Cosh", mpfr_cosh},
    {"Erf", mpfr_erf},          {"Erfc", mpfr_erfc},        {"Exp", mpfr_exp},
    {"Expm1", mpfr_expm1},      {"Ln", mpfr_log},           {"Log10", mpfr_log10},
    {"Log1p", mpfr_log1p},      {"Sin", mpfr_sin},          {"SinCos", mpfr_sin},
    {"Sinh", mpfr_sinh},        {"Sqrt", mpfr_sqrt},        {"Tan", mpfr_tan},
    {"Tanh", mpfr_tanh},        {"Abs", mpfr_abs},          {"Sqr", mpfr_sqr},
    {"Ceil", mpfr_rint_ceil},   {"Floor", mpfr_rint_floor}, {"Frac", mpfr_frac},
    {"NearbyInt", mpfr_rint},   {"Rint", mpfr_rint},        {"Round", mpfr_rint_round},
    {"Trunc", mpfr_rint_trunc}, {"Modf", mpfr_rint_trunc}};
std::map<std::string, Binary> const binaries = {
    {"Add", mpfr_add},     {"Sub", mpfr_sub},     {"Mul", mpfr_mul}, {"Div", mpfr_div},
    {"Atan2", mpfr_atan2}, {"Hypot", mpfr_hypot}, {"Pow", mpfr_pow}, {"Powx", mpfr_pow}};

Big realValue(std::string const& family, double a, double b) {
    Big const x(a);
    if (auto const found = unaries.find(family); found != unaries.end()) {
        return apply(found->second, x);
    }
    if (auto const found = binaries.find(family); found != binaries.end()) {
        return apply(found->second, x, Big(b));
    }
    Big const rootHalf = root(Big(0.5));
    if (family == "CdfNorm") {
        return apply(mpfr_erfc, -x * rootHalf) / 2.0;
    }
    if (family == "CdfNormInv") {
        return erfcInverse(Big(2) - x * 2.0, x * 2.0) / rootHalf;
    }
    if (family == "ErfInv" && a != 0 && std::fabs(a) < 0.5) {
        // The probabilities of the ends would need more digits than there are.
        Big y = x;
        while (!inverseStep(y, apply(mpfr_erf, y) - x)) {
        }
        return y;
    }
    if (family == "ErfInv") {
        return a == 0 ? x : erfcInverse(Big(1) - x, Big(1) + x);
    }
    if (family == "ErfcInv") {
        return erfcInverse(x, Big(2) - x);
    }
    if (family == "Inv" || family == "InvSqrt" || family == "InvCbrt") {
        return Big(1) / (family == "Inv" ? x : family == "InvSqrt" ? root(x) : apply(mpfr_cbrt, x));
    }
    Big const cubeRoot = apply(mpfr_cbrt, x);
    return family == "Pow2o3" ? cubeRoot * cubeRoot : apply(mpfr_pow, x, Big(1.5));
}

Complex complexValue(std::string const& family, Complex const& z, Complex const& w) {
    auto const real = [](Big const& x) { return Complex{x, Big(0)}; };
    auto const power = [&] { return exp(w * log(z)); };
    std::map<std::string, std::function<Complex()>> const values = {
        {"Abs", [&] { return real(norm(z)); }},
        {"Acos", [&] { return acosOf(z); }},
        {"Acosh", [&] { return log(z + sqrt(z + one) * sqrt(z - one)); }},
        {"Add", [&] { return z + w; }},
        {"Arg", [&] { return real(apply(mpfr_atan2, z.im, z.re)); }},
        {"Asin", [&] { return asinOf(z); }},
        {"Asinh", [&] { return conjugate(i) * asinOf(i * z); }},
        {"Atan", [&] { return conjugate(i) * atanhOf(i * z); }},
        {"Atanh", [&] { return atanhOf(z); }},
        {"CIS", [&] { return exp(i * z); }},
        {"Conj", [&] { return conjugate(z); }},
        {"Cos", [&] { return coshOf(i * z); }},
        {"Cosh", [&] { return coshOf(z); }},
        {"Div", [&] { return z / w; }},
        {"Exp", [&] { return exp(z); }},
        {"Ln", [&] { return log(z); }},
        {"Log10", [&] { return log(z) / real(apply(mpfr_log, Big(10))); }},
        {"Mul", [&] { return z * w; }},
        {"MulByConj", [&] { return z * conjugate(w); }},
        {"Pow", power},
        {"Powx", power},
        {"Sin", [&] { return conjugate(i) * sinhOf(i * z); }},
        {"Sinh", [&] { return sinhOf(z); }},
        {"Sqrt", [&] { return sqrt(z); }},
        {"Sub", [&] { return z - w; }},
        {"Tan", [&] { return conjugate(i) * sinhOf(i * z) / coshOf(i * z); }},
        {"Tanh", [&] { return sinhOf(z) / coshOf(z); }},
    };
    return values.at(family)();
}

// Distance of two neighbours at a number of this size.
double spacing(double size, bool single) {
    int exponent = 0;
    std::frexp(size, &exponent);
    int const least = single ? -125 : -1021;
    return std::ldexp(1.0, (exponent < least ? least : exponent) - (single ? 24 : 53));
}

} // namespace

Reference reference(std::string const& family, bool complexSource, std::complex<double> z,
                    std::complex<double> w) {
    bool const isComplex = complexSource || family == "CIS";
    mpfr_set_default_prec(isComplex ? 320 : 160); // complex formulas cancel
    if (isComplex) {
        Complex const value =
            complexValue(family, {Big(z.real()), Big(z.imag())}, {Big(w.real()), Big(w.imag())});
        return {value.re.digits(), value.im.digits()};
    }
    return {realValue(family, z.real(), w.real()).digits(), {0, 0}};
}

double errorOf(std::complex<double> got, Reference const& wanted, Function const& function) {
    double const re = (got.real() - wanted.re.high) - wanted.re.low;
    double const im = (got.imag() - wanted.im.high) - wanted.im.low;
    double const size = std::hypot(wanted.re.high, wanted.im.high);
    bool const relative = function.accuracy == "A11" || function.accuracy == "A26";
    double const least = spacing(size, function.single);
    double const unit = relative ? std::max(size * spacing(1, function.single), least) : least;
    return std::hypot(re, im) / unit;
}

double boundOf(Function const& function) {
    std::map<std::string, double> const bounds = {{"A11", 0x1p12}, {"A21", 4}, {"A24", 1},
                                                  {"A26", 0x1p26}, {"A50", 4}, {"A53", 1}};
    bool const exact =
        function.isOneOf(" Add Sub Sqr Conj Ceil Floor Frac Modf NearbyInt Rint Round Trunc ") ||
        (!function.complexSource && function.isOneOf(" Mul Abs "));
    if (exact) {
        return function.complexSource ? 0.7072 : 0.5; // each part is half a unit off at most
    }
    return bounds.at(function.accuracy) * (function.complexResult ? 4 : 1);
}
