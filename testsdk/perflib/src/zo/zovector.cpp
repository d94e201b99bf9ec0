// zovector.cpp - typed vectors.
#include "zo/zovector.h"

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "psmemory/psmemory.h"
#include "pstest/pstest.h"

namespace {

// Calls action with a zero of the C type that a type's elements, or their halves, have; not at all
// for an unknown code.
template <typename Action>
void withComponent(zoType type, Action action) {
    if (zoFunc::typeToString(type) == "undef") {
        return;
    }
    switch (type & ~zoComplex) {
    case zo8u:
        action(static_cast<unsigned char>(0));
        break;
    case zo8s:
        action(static_cast<signed char>(0));
        break;
    case zo16u:
        action(static_cast<unsigned short>(0));
        break;
    case zo16s:
        action(static_cast<short>(0));
        break;
    case zo32u:
        action(0U);
        break;
    case zo32s:
        action(0);
        break;
    case zo64u:
        action(0ULL);
        break;
    case zo64s:
        action(0LL);
        break;
    case zo32f:
        action(0.0F);
        break;
    default: // the last that has a name
        action(0.0);
        break;
    }
}

int components(zoType type) { return (type & zoComplex) != 0 ? 2 : 1; }

template <typename T>
T minVal() {
    return std::numeric_limits<T>::lowest();
}

template <typename T>
T maxVal() {
    return std::numeric_limits<T>::max();
}

// The limits are compared as double before the cast: 64-bit limits round to a power of two there.
template <typename T>
T elementOf(double value) {
    if constexpr (std::is_integral_v<T>) {
        if (std::isnan(value)) {
            return 0;
        }
        value = std::round(value);
    } else if (!std::isfinite(value)) {
        return static_cast<T>(value);
    }
    if (value <= static_cast<double>(minVal<T>())) {
        return minVal<T>();
    }
    if (value >= static_cast<double>(maxVal<T>())) {
        return maxVal<T>();
    }
    return static_cast<T>(value);
}

template <typename T>
T elementOf(long long value) {
    if constexpr (std::is_integral_v<T>) {
        if (std::cmp_less(value, minVal<T>())) {
            return minVal<T>();
        }
        if (std::cmp_greater(value, maxVal<T>())) {
            return maxVal<T>();
        }
    }
    return static_cast<T>(value);
}

// Sets every element to what values gives for its index: real part first, then the imaginary one.
template <typename Values>
void fill(zoType type, void* data, int length, Values values) {
    if (data == nullptr) {
        return;
    }
    int const parts = components(type);
    withComponent(type, [&](auto zero) {
        using T = decltype(zero);
        T* out = static_cast<T*>(data);
        for (int i = 0; i < length; ++i) {
            for (int part = 0; part < parts; ++part) {
                *out++ = elementOf<T>(values(i, part));
            }
        }
    });
}

// Subtract-with-borrow over three lags, added to a congruential sequence. Taken up from a seed by
// the congruential step; always the same sequence for the same seed.
class Generator {
public:
    explicit Generator(unsigned seed) : m_x(step(seed)), m_y(step(m_x)), m_z(step(m_y)) {}

    int next() {
        m_linear = step(m_linear);
        unsigned long long const taken = static_cast<unsigned long long>(m_x) + m_borrow;
        unsigned lag = m_y - static_cast<unsigned>(taken);
        m_borrow = m_y < taken ? 1 : 0;
        if (m_borrow != 0) {
            lag -= 18; // the modulus is 2 to the 32nd less 18
        }
        m_x = m_y;
        m_y = m_z;
        m_z = lag;
        return static_cast<int>(lag + m_linear);
    }

    unsigned lastLag() const { return m_z; }

private:
    static unsigned step(unsigned word) { return word * 69069U + 1013904243U; }

    unsigned m_x;
    unsigned m_y;
    unsigned m_z;
    unsigned m_linear = 1131199209;
    unsigned m_borrow = 0;
};

// Field of one component in getString.
template <typename T>
constexpr char const* fieldFormat() {
    if constexpr (std::is_same_v<T, unsigned char>) {
        return "%4u";
    } else if constexpr (std::is_same_v<T, signed char>) {
        return "%5d";
    } else if constexpr (std::is_same_v<T, unsigned short>) {
        return "%6u";
    } else if constexpr (std::is_same_v<T, short>) {
        return "%7d";
    } else if constexpr (std::is_same_v<T, unsigned>) {
        return "%11u";
    } else if constexpr (std::is_same_v<T, int>) {
        return "%12d";
    } else if constexpr (std::is_same_v<T, unsigned long long>) {
        return "%24llu";
    } else if constexpr (std::is_same_v<T, long long>) {
        return "%24lld";
    } else if constexpr (std::is_same_v<T, float>) {
        return "%14.6g";
    } else {
        return "%20.12g";
    }
}

template <typename T>
void addField(psString& text, T value) {
    char field[48];
    snprintf(field, sizeof field, fieldFormat<T>(), value);
    text += field;
}

template <typename T>
psString vectorStringReal(T const* data, int length) {
    psString text;
    for (int i = 0; i < length; ++i) {
        addField(text, data[i]);
    }
    return text;
}

template <typename T>
psString vectorStringCplx(T const* data, int length) {
    psString text;
    for (int i = 0; i < length; ++i, data += 2) {
        text += " (";
        addField(text, data[0]);
        text += ',';
        addField(text, data[1]);
        text += ')';
    }
    return text;
}

} // namespace

unsigned zoVector::m_seed = zoVector::startSeed;

zoVector::zoVector() { init(0, ""); }
zoVector::zoVector(zoType type) { init(type, ""); }
zoVector::zoVector(zoFunc const& func, zoArg arg) { init(func.type(arg), func.channelsName(arg)); }
zoVector::zoVector(zoFunc const& func, int arg) : zoVector(func, static_cast<zoArg>(arg)) {}

void zoVector::init(zoType type, psString const& channels) {
    m_type = type;
    m_name = psString("_") + zoFunc::typeToString(type) + "_" + channels;
}

zoVector::~zoVector() {
    zoVector::deleteVector();
    zoVector::deleteReservedCopy();
}

int zoVector::objectSize() { return m_length * elementSize(m_type); }

psString zoVector::objectInfo() {
    psString text("Vector ");
    return text << zoFunc::typeToString(m_type) << " len=" << m_length;
}

int zoVector::reserveCopy() {
    if (m_data == nullptr) {
        return 0;
    }
    size_t const bytes = static_cast<size_t>(objectSize());
    zoVector::deleteReservedCopy();
    m_reserved = calloc(1, bytes);
    if (m_reserved == nullptr) {
        return 0;
    }
    memcpy(m_reserved, m_data, bytes);
    return 1;
}

int zoVector::setReservedCopy() {
    if (m_data == nullptr || m_reserved == nullptr) {
        return 0;
    }
    memcpy(m_data, m_reserved, static_cast<size_t>(objectSize()));
    return 1;
}

void zoVector::deleteReservedCopy() {
    free(m_reserved);
    m_reserved = nullptr;
}

// A kept copy belongs to the data and goes with them.
void zoVector::deleteVector() {
    psTest::deallocate(m_data);
    m_data = nullptr;
    m_length = 0;
    zoVector::deleteReservedCopy();
}

bool zoVector::createVector(int length) {
    deleteVector();
    m_data = allocateVector(length);
    m_length = m_data != nullptr ? length : 0;
    return m_data != nullptr;
}

bool zoVector::createVector(int length, int mode, double a, double b, double c) {
    if (!createVector(length)) {
        return false;
    }
    setVector(mode, a, b, c);
    return true;
}

void* zoVector::allocateVector(int length) {
    long long const bytes = static_cast<long long>(length) * elementSize(m_type);
    if (bytes < 1 || bytes > INT_MAX) { // else the allocator tells of a failure
        g_ostrm << MSG_ERR << "-- Memory error: can't allocate " << bytes << " bytes\n"
                << MSG_RESTORE;
        return nullptr;
    }
    int const align = psGetAlignByByte() ? -1 : -elementSize(m_type);
    return psTest::allocate(static_cast<int>(bytes), align, static_cast<psObject*>(this));
}

void zoVector::setVector(int mode, double a, double b, double c) {
    switch (mode) {
    case setModeConst:
        setConst();
        break;
    case setModeConst1:
    case setModeConst2:
    case setModeConst5:
        setConst(a, b);
        break;
    case setModeMax:
        setMaxValue();
        break;
    case setModeMin:
        setMinValue();
        break;
    case setModeRandom:
        if (a == 0.0 && b == 0.0) {
            setRandom();
        } else {
            setRandom(a, b);
        }
        break;
    case setModeSequence:
        setSequence(a, b, c, false);
        break;
    default:
        break;
    }
}

void zoVector::setConst() { setConst(0.0, 0.0); }

void zoVector::setConst(double re, double im) {
    fill(m_type, m_data, m_length, [=](int, int part) { return part == 0 ? re : im; });
}

void zoVector::setConst_64s(long long re, long long im) {
    fill(m_type, m_data, m_length, [=](int, int part) { return part == 0 ? re : im; });
}

void zoVector::setMinValue() { setConst(getMinValue(m_type), getMinValue(m_type)); }
void zoVector::setMaxValue() { setConst(getMaxValue(m_type), getMaxValue(m_type)); }

bool zoVector::updateJaehneMagn(zoType type, double& magnitude, double& offset) {
    if (!(magnitude >= 0.0)) {
        return false;
    }
    double const low = getMinValue(type);
    double const high = getMaxValue(type);
    bool const isUnsigned = (type & (zoSigned | zoFloating)) == 0;
    magnitude = std::fmin(magnitude, high / 2 - low / 2); // halves: the range itself may overflow
    offset = isUnsigned ? low / 2 + high / 2 : 0.0;
    return true;
}

void zoVector::setJaehne() { setJaehne(std::numeric_limits<double>::max()); }

void zoVector::setJaehne(double magnitude) {
    double offset = 0.0;
    if (!updateJaehneMagn(m_type, magnitude, offset)) {
        return;
    }
    double const halfPi = std::acos(0.0);
    int const length = m_length;
    fill(m_type, m_data, m_length,
         [=](int i, int) { return std::sin(i * (i * halfPi / length)) * magnitude + offset; });
}

void zoVector::setSequence(double first, double step) { setSequence(first, step, 0.0, false); }

void zoVector::setSequence(double first, double step, double imaginary, bool wrap) {
    double const low = getMinValue(m_type);
    double const high = getMaxValue(m_type);
    int start = 0; // index of the element that is first
    fill(m_type, m_data, m_length, [&](int i, int part) {
        if (part != 0) {
            return imaginary;
        }
        double value = first + (i - start) * step;
        if (wrap && (value < low || value > high)) {
            start = i;
            value = first;
        }
        return std::fmin(std::fmax(value, low), high);
    });
}

void zoVector::setIndex() { setSequence(0.0, 1.0); }

void zoVector::setRandom() {
    if ((m_type & zoFloating) != 0) {
        setRandom(-1.0, 1.0);
    } else {
        setRandom(getMinValue(m_type), getMaxValue(m_type));
    }
}

// Twice the halves instead of the whole, which may overflow; the same to the last bit otherwise.
void zoVector::setRandom(double low, double high) {
    if (m_data == nullptr) {
        return;
    }
    double const lo = std::fmax(low, getMinValue(m_type));
    double const hi = std::fmin(high, getMaxValue(m_type));
    double const halfRange = hi / 2 - lo / 2;
    double const middle = lo / 2 + hi / 2;
    Generator generator(m_seed);
    fill(m_type, m_data, m_length, [&](int, int) {
        double const value = 2 * (generator.next() * 2.3283064365387e-10) * halfRange + middle;
        return std::fmax(std::fmin(value, std::fmax(lo, hi)), std::fmin(lo, hi));
    });
    m_seed = generator.lastLag();
}

void zoVector::setRandom(double low, double high, unsigned seed) {
    m_seed = seed;
    setRandom(low, high);
}

double zoVector::getIndex(int index) {
    double re = 0.0;
    double im = 0.0;
    getIndex(index, re, im);
    return re;
}

void zoVector::getIndex(int index, double& re, double& im) {
    re = im = 0.0;
    if (index < 0 || index >= m_length) {
        return;
    }
    withComponent(m_type, [&](auto zero) {
        auto const* element =
            static_cast<decltype(zero) const*>(m_data) + index * components(m_type);
        re = static_cast<double>(element[0]);
        im = components(m_type) == 2 ? static_cast<double>(element[1]) : 0.0;
    });
}

psString zoVector::getString() { return getDataString(m_type, m_data, m_length); }

double zoVector::getMinValue(zoType type) {
    double value = 0.0;
    withComponent(type, [&](auto zero) { value = static_cast<double>(minVal<decltype(zero)>()); });
    return value;
}

double zoVector::getMaxValue(zoType type) {
    double value = 0.0;
    withComponent(type, [&](auto zero) { value = static_cast<double>(maxVal<decltype(zero)>()); });
    return value;
}

double zoVector::getMinAbsValue(zoType type) {
    double value = 0.0;
    withComponent(type, [&](auto zero) {
        using T = decltype(zero);
        value = std::is_integral_v<T> ? 1.0 : static_cast<double>(std::numeric_limits<T>::min());
    });
    return value;
}

int zoVector::elementSize(zoType type) {
    int bytes = 0;
    withComponent(type,
                  [&](auto zero) { bytes = components(type) * static_cast<int>(sizeof zero); });
    return bytes;
}

psString zoVector::getDataString(zoType type, void const* data, int length) {
    psString text;
    if (data == nullptr) {
        return text;
    }
    withComponent(type, [&](auto zero) {
        auto const* values = static_cast<decltype(zero) const*>(data);
        text = components(type) == 2 ? vectorStringCplx(values, length)
                                     : vectorStringReal(values, length);
    });
    return text;
}

psString zoVector::getByteString(void const* data, int length) {
    psString text;
    for (int i = 0; data != nullptr && i < length; ++i) {
        char field[8];
        snprintf(field, sizeof field, " %02X",
                 static_cast<unsigned>(static_cast<unsigned char const*>(data)[i]));
        text += field;
    }
    return text;
}
