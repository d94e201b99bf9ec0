// psctrl.cpp - the words of the two floating-point units: read, set, named, recorded.
#include "pstool/psctrl.h"

#include "pscpu/cpuid.h"
#include "psstream/psostream.h"

namespace {

// A value of a register's field, with its name and a trailing blank.
struct BitName {
    unsigned bits;
    char const* name;
};

// Fields: the row that equals the field's value.
constexpr BitName roundingBits87[] = {
    {0xc00, "Zero "}, {0x800, "Up "}, {0x400, "Down "}, {0, "Near "}};
constexpr BitName precisionBits87[] = {{0, "24 "}, {0x200, "53 "}, {0x300, "64 "}};
constexpr BitName roundingBitsSSX[] = {
    {0x6000, "Zero "}, {0x4000, "Up "}, {0x2000, "Down "}, {0, "Near "}};
constexpr BitName flushZeroBitSSX[] = {{0x8000, "FlushToZero "}, {0, "NoFlushToZero "}};

// Masks: every row whose bit is set, each an exception that is masked.
constexpr BitName exceptionControlBits87[] = {{0x01, "Invalid "},    {0x02, "Denormal "},
                                              {0x04, "Zerodivide "}, {0x08, "Overflow "},
                                              {0x10, "Underflow "},  {0x20, "Inexact "}};
constexpr BitName exceptionControlBitsSSX[] = {{0x080, "Invalid "},    {0x100, "Denormal "},
                                               {0x200, "Zerodivide "}, {0x400, "Overflow "},
                                               {0x800, "Underflow "},  {0x1000, "Inexact "}};

// Flags, the same in both units. "?" marks those that count as bad, "_" the harmless one.
constexpr BitName exceptionStatusBits[] = {{0x01, "?Invalid "},    {0x02, "?Denormal "},
                                           {0x04, "?Zerodivide "}, {0x08, "?Overflow "},
                                           {0x10, "?Underflow "},  {0x20, "_Inexact "}};

template <int N>
char const* fieldName(BitName const (&rows)[N], unsigned field) {
    for (BitName const& row : rows) {
        if (row.bits == field) {
            return row.name;
        }
    }
    return "";
}

template <int N>
psString bitNames(BitName const (&rows)[N], unsigned value) {
    psString text;
    for (BitName const& row : rows) {
        if ((value & row.bits) != 0) {
            text += row.name;
        }
    }
    return text;
}

psString statusNames(unsigned value) {
    psString const text = bitNames(exceptionStatusBits, value);
    return text.empty() ? psString("Ok") : text;
}

char const* const noSSE = "cpu has not SSX extension";

unsigned replaceBits(unsigned old, unsigned value, unsigned mask) {
    return (old & ~mask) | (value & mask);
}

// The 256-bit registers are there and the operating system saves them.
bool avxUsable() {
    CPUID const leaf1(1);
    return leaf1.getBit(2, 27) != 0 && leaf1.getBit(2, 28) != 0 && (zol_get_xcr0() & 6U) == 6U;
}

// No operand; every vector register is clobbered. Zero first: the comparison that gives ones must
// not meet a signalling NaN, which would raise a flag.
void fillRegisters256() {
    asm volatile("vxorps %%ymm0, %%ymm0, %%ymm0\n\t"
                 "vcmptrueps %%ymm0, %%ymm0, %%ymm0\n\t"
                 "vmovaps %%ymm0, %%ymm1\n\t"
                 "vmovaps %%ymm0, %%ymm2\n\t"
                 "vmovaps %%ymm0, %%ymm3\n\t"
                 "vmovaps %%ymm0, %%ymm4\n\t"
                 "vmovaps %%ymm0, %%ymm5\n\t"
                 "vmovaps %%ymm0, %%ymm6\n\t"
                 "vmovaps %%ymm0, %%ymm7\n\t"
                 "vmovaps %%ymm0, %%ymm8\n\t"
                 "vmovaps %%ymm0, %%ymm9\n\t"
                 "vmovaps %%ymm0, %%ymm10\n\t"
                 "vmovaps %%ymm0, %%ymm11\n\t"
                 "vmovaps %%ymm0, %%ymm12\n\t"
                 "vmovaps %%ymm0, %%ymm13\n\t"
                 "vmovaps %%ymm0, %%ymm14\n\t"
                 "vmovaps %%ymm0, %%ymm15\n\t"
                 "vzeroupper"
                 :
                 :
                 : "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "xmm8", "xmm9",
                   "xmm10", "xmm11", "xmm12", "xmm13", "xmm14", "xmm15");
}

void fillRegisters128() {
    asm volatile("pcmpeqd %%xmm0, %%xmm0\n\t"
                 "pcmpeqd %%xmm1, %%xmm1\n\t"
                 "pcmpeqd %%xmm2, %%xmm2\n\t"
                 "pcmpeqd %%xmm3, %%xmm3\n\t"
                 "pcmpeqd %%xmm4, %%xmm4\n\t"
                 "pcmpeqd %%xmm5, %%xmm5\n\t"
                 "pcmpeqd %%xmm6, %%xmm6\n\t"
                 "pcmpeqd %%xmm7, %%xmm7\n\t"
                 "pcmpeqd %%xmm8, %%xmm8\n\t"
                 "pcmpeqd %%xmm9, %%xmm9\n\t"
                 "pcmpeqd %%xmm10, %%xmm10\n\t"
                 "pcmpeqd %%xmm11, %%xmm11\n\t"
                 "pcmpeqd %%xmm12, %%xmm12\n\t"
                 "pcmpeqd %%xmm13, %%xmm13\n\t"
                 "pcmpeqd %%xmm14, %%xmm14\n\t"
                 "pcmpeqd %%xmm15, %%xmm15"
                 :
                 :
                 : "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "xmm8", "xmm9",
                   "xmm10", "xmm11", "xmm12", "xmm13", "xmm14", "xmm15");
}

} // namespace

// The store doesn't wait, the load does: with an unmasked exception pending it raises the signal,
// and a load that unmasks a raised flag makes the next waiting x87 instruction raise it. Callers
// that want neither clear the flags first.
void ps_set_cw_fpu(unsigned value, unsigned mask) {
    unsigned short const word =
        static_cast<unsigned short>(replaceBits(ps_get_cw_fpu(), value, mask));
    asm volatile("fldcw %0" : : "m"(word) : "memory");
}

// Never raises a pending exception.
unsigned ps_get_cw_fpu() {
    unsigned short word;
    asm volatile("fnstcw %0" : "=m"(word) : : "memory");
    return word;
}

// Never raises a pending exception.
unsigned ps_get_sw_fpu() {
    unsigned short word;
    asm volatile("fnstsw %0" : "=m"(word) : : "memory");
    return word;
}

// Never raises a pending exception, and leaves none.
unsigned ps_clear_fpu() {
    unsigned const before = ps_get_sw_fpu();
    asm volatile("fnclex" : : : "memory");
    return before;
}

// Raises nothing, also when it unmasks an exception whose flag is set.
void ps_set_ssx(unsigned value, unsigned mask) {
    unsigned const word = replaceBits(ps_get_ssx(), value, mask);
    asm volatile("ldmxcsr %0" : : "m"(word) : "memory");
}

unsigned ps_get_ssx() {
    unsigned word;
    asm volatile("stmxcsr %0" : "=m"(word) : : "memory");
    return word;
}

// Changes no flag. What a caller kept in a vector register is lost.
void ps_destroy_ssx() {
    static bool const wide = avxUsable(); // CPUID is slow under a hypervisor
    if (wide) {
        fillRegisters256();
    } else {
        fillRegisters128();
    }
}

constinit unsigned ts87Base::Rounding = 0;
constinit unsigned ts87Base::Precision = 0x200;
constinit unsigned ts87Base::Exception = 0x3b;

void ts87Base::clear() { ps_clear_fpu(); }

void ts87Base::setDefault() { set(Exception | Precision | Rounding, 0xf3f); }

void ts87Base::enableExceptions() { ps_set_cw_fpu(0, 0x3f); }

void ts87Base::disableExceptions() { ps_set_cw_fpu(0x3f, 0x3f); }

void ts87Base::set(unsigned value, unsigned mask) {
    clear();
    ps_set_cw_fpu(value, mask);
}

void ts87Base::disableInexactException() { ps_set_cw_fpu((getSW() & 0x3fU) | 0x20U, 0x3f); }

unsigned ts87Base::getCW() const { return ps_get_cw_fpu(); }

unsigned ts87Base::getSW() const { return ps_get_sw_fpu(); }

psString ts87Base::strCW(unsigned cw) {
    psString text(fieldName(roundingBits87, cw & 0xc00U));
    text += fieldName(precisionBits87, cw & 0x300U);
    text += bitNames(exceptionControlBits87, cw);
    return text;
}

psString ts87Base::strSW(unsigned sw) { return statusNames(sw); }

constinit unsigned tsSSXBase::Rounding = 0;
constinit unsigned tsSSXBase::Exception = 0x1f80;
constinit unsigned tsSSXBase::FlushZero = 0x8000;

tsSSXBase::tsSSXBase() : m_hasSSE(CPUID(1).getBit(3, 25) != 0) {}

void tsSSXBase::destroy() {
    if (m_hasSSE) {
        ps_destroy_ssx();
    }
}

// The denormals-are-zero bit stays as it is.
void tsSSXBase::setDefault() { set(Rounding | Exception | FlushZero, 0xffbf); }

void tsSSXBase::enableExceptions() { set(0, 0x1f80); }

void tsSSXBase::disableExceptions() { set(0x1f80, 0x1f80); }

void tsSSXBase::set(unsigned value, unsigned mask) {
    if (m_hasSSE) {
        ps_set_ssx(value, mask);
    }
}

void tsSSXBase::disableInexactException() { set(get() | 0x1000U, 0x1f80); }

unsigned tsSSXBase::get() const { return m_hasSSE ? ps_get_ssx() : 0; }

psString tsSSXBase::strCW(unsigned value) const {
    if (!m_hasSSE) {
        return noSSE;
    }
    psString text(fieldName(roundingBitsSSX, value & 0x6000U));
    text += bitNames(exceptionControlBitsSSX, value);
    text += fieldName(flushZeroBitSSX, value & 0x8000U);
    return text;
}

psString tsSSXBase::strExceptionState(unsigned value) const {
    return m_hasSSE ? statusNames(value) : psString(noSSE);
}

ps87::ps87() : m_base(new ts87Base) { init(); }

ps87::ps87(ps87 const& other) : ps87() {
    m_cw = other.m_cw;
    m_sw = other.m_sw;
}

ps87& ps87::operator=(ps87 const& other) {
    if (this != &other) {
        delete m_base;
        m_base = new ts87Base;
        init();
        m_cw = other.m_cw;
        m_sw = other.m_sw;
    }
    return *this;
}

ps87::~ps87() {
    init(); // leaves the unit in the default modes
    delete m_base;
}

void ps87::init() {
    m_cw = 0;
    m_sw = 0;
    m_base->setDefault();
}

void ps87::clear() {
    m_cw = 0;
    m_sw = 0;
    m_base->clear();
}

// A flag that is left from before, whose exception is unmasked, would raise its signal at the next
// waiting instruction of this unit: in the measured function, which has not done it.
void ps87::start() { m_base->clear(); }

void ps87::stop() {
    m_sw |= m_base->getSW();
    m_cw |= m_base->getCW();
}

psString ps87::strCW() const { return ts87Base::strCW(m_cw); }

psString ps87::strSW() const { return ts87Base::strSW(m_sw); }

// By text on purpose: the name tables alone decide which flags count as bad.
bool ps87::badStatus() const { return strSW().contains("?"); }

void ps87::setExceptionValue(unsigned value) { ts87Base::Exception = value; }

psSSX::psSSX() : m_base(new tsSSXBase) { init(); }

psSSX::psSSX(psSSX const& other) : psSSX() { m_value = other.m_value; }

psSSX& psSSX::operator=(psSSX const& other) {
    if (this != &other) {
        delete m_base;
        m_base = new tsSSXBase;
        init();
        m_value = other.m_value;
    }
    return *this;
}

psSSX::~psSSX() {
    init();
    delete m_base;
}

void psSSX::init() {
    m_value = 0;
    m_base->destroy();
    m_base->setDefault();
}

void psSSX::clear() {
    m_value = 0;
    m_base->destroy();
    m_base->set(0, 0x3f);
}

// Unlike in ps87 no flag has to go: here an exception is raised by the instruction that it belongs
// to, never later. The record shows all since init().
void psSSX::start() { m_base->destroy(); }

void psSSX::stop() { m_value |= m_base->get(); }

psString psSSX::strCW() const { return m_base->strCW(m_value); }

psString psSSX::strExceptionState() const { return m_base->strExceptionState(m_value); }

// By text, as in ps87.
bool psSSX::badStatus() const { return strExceptionState().contains("?"); }

void psSSX::setExceptionValue(unsigned value) { tsSSXBase::Exception = value; }

ps87 g_ctrl87;
psSSX g_ssx;
bool is_W_flagUsed = false;

void psInitCtrlStatus() {
    g_ctrl87.init();
    g_ssx.init();
    if (is_W_flagUsed) { // for the next init
        g_ctrl87.setExceptionValue(0x20);
        g_ssx.setExceptionValue(0x1000);
    }
}

void psClearCtrlStatus() {
    g_ctrl87.clear();
    g_ssx.clear();
}

bool psBadCtrlStatus(bool& bad87, bool& badSSX) {
    bad87 = g_ctrl87.badStatus();
    badSSX = g_ssx.badStatus();
    return bad87 || badSSX;
}

void psPrintCtrlStatus(bool bad87, bool badSSX) {
    if (bad87) {
        g_ostrm << MSG_WARN << "-- Status    87: " << g_ctrl87.strSW() << "\n" << MSG_RESTORE;
    }
    if (badSSX) {
        g_ostrm << MSG_WARN << "-- Status    SSX: " << g_ssx.strExceptionState() << "\n"
                << MSG_RESTORE;
    }
}
