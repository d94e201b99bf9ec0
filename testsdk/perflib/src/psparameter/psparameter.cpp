// psparameter.cpp - what every parameter shares: reading, printing and the iteration of one value.
#include "psparameter/psparameter.h"

#include <cstring>

#include "psbase/psexception.h"
#include "psbase/tssignal.h"

namespace {

// Keeps the landing place of whoever set it before us: a test has its own while it reads its
// parameters, and a measurement that faults later must not land in a frame that is gone.
class LandingKeeper {
public:
    LandingKeeper() { std::memcpy(&outer, &tsSignal::m_jmpbuf, sizeof outer); }
    LandingKeeper(LandingKeeper const&) = delete;
    LandingKeeper& operator=(LandingKeeper const&) = delete;
    ~LandingKeeper() { std::memcpy(&tsSignal::m_jmpbuf, &outer, sizeof outer); }

private:
    jmp_buf outer;
};

[[gnu::noinline]] void readItem(psParameter& parm, psIStream& in) {
    psString const text =
        in.getItemValue(parm.name(), parm.defaultString(), parm.prompt(), parm.validString());
    bool const emptyAnswer =
        text.empty() && in.source() == psIStream::FromDefault && !in.batchMode();
    if (!emptyAnswer) { // an empty answer at the console keeps the value
        parm.translate(text);
    }
}

// Sets the landing place; nothing with a destructor stands in this frame. Made from a psString, so
// that info() holds the words.
[[gnu::noinline]] void readItemGuarded(psParameter& parm, psIStream& in) {
    if (setjmp(tsSignal::m_jmpbuf) != 0) {
        throw psException(psString(tsSignal::getInfo()));
    }
    readItem(parm, in);
}

} // namespace

psParameter::psParameter(psString name, psString title) { init(name, title); }

void psParameter::init(psString name, psString title) {
    m_name = name;
    m_title = title.empty() ? name : title;
    m_iterating = false;
    m_toRead = true;
    m_flags = 0;
    m_deprecatedNow = false;
}

void psParameter::reset() { m_iterating = false; }

psString psParameter::description() const { return m_name + " = " + defaultString(); }

psString psParameter::prompt() const {
    psString const valid = validString();
    return valid.empty() ? m_title : m_title + " {" + valid + "}";
}

void psParameter::resetIterator() { m_iterating = false; }

bool psParameter::firstValue() {
    resetIterator();
    return nextValue();
}

bool psParameter::nextValue() {
    m_iterating = !m_iterating;
    return m_iterating;
}

bool psParameter::setDeprecatedFlag(bool) { return false; }

psOStream& psParameter::toOStream(psOStream& out) const {
    if (!m_name.empty()) {
        out << m_name << "=" << valueString() << " ";
    }
    return out;
}

psCStream& psParameter::toCStream(psCStream& out) const {
    psString text;
    if (m_name.empty()) {
        putColumn(out, text);
        return out;
    }
    if (m_deprecatedNow) {
        text = m_deprecatedText;
    } else if ((m_flags & textInQuotes) != 0) {
        text << " \"" << valueString() << "\"";
    } else {
        text = valueString();
    }
    putColumn(out, text);
    return out;
}

psCStream& psParameter::nameToCStream(psCStream& out) const {
    putColumn(out, m_name);
    return out;
}

void psParameter::putColumn(psCStream& out, psString const& text) const {
    if (colmIndex() < 0) {
        out << text;
    } else {
        out.setColm(colmIndex(), text);
    }
}

psIStream& psParameter::fromIStream(psIStream& in) {
    if (m_name.empty()) {
        return in;
    }
    if (!m_toRead) {
        g_ostrm << " " << description() << "\n";
        return in;
    }
    OutputLevel const oldOutLevel = g_ostrm.getOutLevel();
    if (!in.batchMode()) { // the prompt is seen whatever the user wants to see
        g_ostrm.setOutLevel(dialogueLevel);
    }
    try {
        LandingKeeper const outer;
        readItemGuarded(*this, in);
    } catch (psException const& failure) {
        g_ostrm << "-" << failure.info() << "\n";
    }
    g_ostrm << " " << description() << "\n";
    if (in.source() == psIStream::FromConsole) {
        c_out.flush();
    }
    g_ostrm.setOutLevel(oldOutLevel);
    return in;
}

void psParameter::translate(psString) {}
