// psparameter.h - a named value that a test varies: how it is read, printed and stepped,
// whether it has one value or fifty.
#ifndef PSPARAMETER_PSPARAMETER_H
#define PSPARAMETER_PSPARAMETER_H

#include "psstream/pscstream.h"
#include "psstream/psistream.h"
#include "psstream/psostream.h"

// The base of all parameters: a name without a value, which answers everything harmlessly.
class psParameter {
public:
    enum Flags { textInQuotes = 2 };

    psParameter() = default;
    psParameter(psString name, psString title);
    virtual ~psParameter() = default;
    // An empty title means the name. An empty name makes the parameter silent.
    void init(psString name, psString title);
    psString name() const { return m_name; }

    virtual void reset();
    virtual psString valueString() const { return ""; }
    virtual psString defaultString() const { return valueString(); } // translate must accept it
    virtual psString validString() const { return ""; }
    virtual psString description() const;
    virtual psString prompt() const;
    virtual void resetIterator();
    virtual bool firstValue();
    virtual bool nextValue(); // a single value answers true, then false
    virtual bool isDeprecatedParm() { return false; }
    virtual bool isDeprecatedValue() { return false; }
    virtual bool setDeprecatedFlag(bool on);
    virtual psOStream& toOStream(psOStream& out) const; // "name=value "
    virtual int colmIndex() const { return -1; }        // column of the table; -1: the next one
    virtual psCStream& toCStream(psCStream& out) const;
    virtual psCStream& nameToCStream(psCStream& out) const;

    // Reads the value from -d data, ini file, console or default, and says what it is. Bad text is
    // told and leaves the value alone.
    virtual psIStream& fromIStream(psIStream& in);

    virtual void translate(psString text); // takes the text as the value; throws psException

    bool m_toRead = true; // fromIStream really reads
    int m_flags = 0;      // Flags

protected:
    psString m_name;
    psString m_title;
    bool m_iterating = false; // the iteration stands on a value
    bool m_deprecatedNow = false;
    psString m_deprecatedText; // what tables show instead of a deprecated value

private:
    void putColumn(psCStream& out, psString const& text) const;
};

#endif
