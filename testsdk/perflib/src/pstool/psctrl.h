// psctrl.h - floating-point control and status of the two units: the ts bases touch the
// processor, the ps classes record what was seen. "SSX" is the word here for the SSE unit.
#ifndef PSTOOL_PSCTRL_H
#define PSTOOL_PSCTRL_H

#include "psbase/psstring.h"

// Machine routines: one read, or one read-change-write, each.
void ps_set_cw_fpu(unsigned value, unsigned mask);
unsigned ps_get_cw_fpu();
unsigned ps_get_sw_fpu();
unsigned ps_clear_fpu(); // gives the status word from before
void ps_set_ssx(unsigned value, unsigned mask);
unsigned ps_get_ssx();
void ps_destroy_ssx(); // fills all vector registers with ones

// The x87 unit's words: its modes, set from the three fields, and its flags.
class ts87Base {
public:
    static unsigned Rounding;
    static unsigned Precision;
    static unsigned Exception; // mask bits; zero-divide starts unmasked, on purpose

    void clear();
    void setDefault();
    void enableExceptions();
    void disableExceptions();
    void set(unsigned value, unsigned mask);
    void disableInexactException(); // from the status, not the control word
    unsigned getCW() const;
    unsigned getSW() const;
    static psString strCW(unsigned cw);
    static psString strSW(unsigned sw);
};

// The SSE unit's register, which has the modes and the flags in one.
class tsSSXBase {
public:
    static unsigned Rounding;
    static unsigned Exception;
    static unsigned FlushZero;

    tsSSXBase();
    explicit tsSSXBase(bool hasSSE) : m_hasSSE(hasSSE) {}

    // Each does nothing on a processor without SSE.
    void destroy();
    void setDefault();
    void enableExceptions();
    void disableExceptions();
    void set(unsigned value, unsigned mask);
    void disableInexactException();
    unsigned get() const;
    psString strCW(unsigned value) const;
    psString strExceptionState(unsigned value) const;

private:
    bool m_hasSSE;
};

// The record of what the x87 unit showed behind measured calls.
class ps87 {
public:
    ps87();
    ps87(ps87 const& other);
    ps87& operator=(ps87 const& other);
    ~ps87();

    void init();  // forget the record, load the default modes
    void clear(); // forget the record, clear the flags
    void start(); // clear the flags, keep the record
    void stop();  // add the present words to the record
    unsigned getCW() const { return m_cw; }
    unsigned getSW() const { return m_sw; }
    psString strCW() const;
    psString strSW() const;
    bool badStatus() const;
    void setExceptionValue(unsigned value);

private:
    ts87Base* m_base; // owned
    unsigned m_cw;    // or of the control words seen
    unsigned m_sw;    // or of the status words seen
};

// The record of what the SSE unit showed behind measured calls.
class psSSX {
public:
    psSSX();
    psSSX(psSSX const& other);
    psSSX& operator=(psSSX const& other);
    ~psSSX();

    void init();  // as in ps87, but all three destroy the vector registers
    void clear(); // likewise
    void start(); // destroys the vector registers; the flags stay
    void stop();  // adds the present register to the record
    unsigned get() const { return m_value; }
    psString strCW() const;
    psString strExceptionState() const;
    bool badStatus() const;
    void setExceptionValue(unsigned value);

private:
    tsSSXBase* m_base; // owned
    unsigned m_value;  // or of the registers seen
};

extern ps87 g_ctrl87;
extern psSSX g_ssx;
extern bool is_W_flagUsed; // key -W: only inexact stays masked

// Both units; psTest forwards to these.
void psInitCtrlStatus();
void psClearCtrlStatus();
bool psBadCtrlStatus(bool& bad87, bool& badSSX);
void psPrintCtrlStatus(bool bad87, bool badSSX); // at the warning level

#endif
