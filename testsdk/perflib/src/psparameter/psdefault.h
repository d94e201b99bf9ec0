// psdefault.h - parameters with a single value: numbers, and values with names.
#ifndef PSPARAMETER_PSDEFAULT_H
#define PSPARAMETER_PSDEFAULT_H

#include "psparameter/psparameter.h"

// A size in two dimensions, as a test's parameter may hold it.
struct ZoliSize {
    int width = 0;
    int height = 0;
};

// All of a single value but its conversion from and to text. For int, bool and ZoliSize.
template <typename T>
class psDefault_NSC : public psParameter {
public:
    psDefault_NSC() = default;
    psDefault_NSC(T value, psString name, psString title = "");
    void init(T value, psString name, psString title = "");

    void reset() override;
    psString valueString() const override;
    bool isDeprecatedParm() override;
    bool setDeprecatedFlag(bool on) override;
    void translate(psString text) override;

    virtual T value() const { return m_value; }
    virtual psString valueToString(T value) const;
    virtual T stringToValue(psString& text) const; // sets the text's flag on failure
    virtual T validItem(psString item);            // throws psException
    operator T() const { return value(); }

    // A value that tables also show under an old text.
    void addDeprecated(T value, psString text);
    void setValue(T value) { m_value = value; }

protected:
    T m_value{};

private:
    psList<T> m_deprecatedValues;
    psStringList m_deprecatedTexts; // parallel to the values
};

// A number as text, and back. A text that begins with no number, or is empty or blank, sets its
// flag.
psString psNumberToString(int value);
int psStringToNumber(psString& text);

// Numbers, decimal or with a leading 0x. For int.
template <typename T>
class psDefault : public psDefault_NSC<T> {
public:
    using psDefault_NSC<T>::psDefault_NSC;
    psString valueToString(T value) const override;
    T stringToValue(psString& text) const override;
};

// Values with names, abbreviated in any case; an empty text is the first name. For int and bool.
template <typename T>
class psMapDefault : public psDefault_NSC<T> {
public:
    psMapDefault() = default;
    void add(T value, psString name); // a further name of a value replaces the first
    psString validString() const override;
    psString valueToString(T value) const override;
    T stringToValue(psString& text) const override;

private:
    psList<T> m_mapValues;
    psStringList m_mapNames; // parallel to the values
};

// Misalignment: the remainder by the alignment.
class DefaultAlign : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    int validItem(psString item) override;
};

// Shift: cut to a multiple of the alignment.
class DefaultShift : public psDefault<int> {
public:
    using psDefault<int>::psDefault;
    int validItem(psString item) override;
};

extern template class psDefault_NSC<int>;
extern template class psDefault_NSC<bool>;
extern template class psDefault_NSC<ZoliSize>;
extern template class psDefault<int>;
extern template class psMapDefault<int>;
extern template class psMapDefault<bool>;

#endif
