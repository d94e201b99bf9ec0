// psdefault.cpp - single values and their texts.
#include "psparameter/psdefault.h"

#include "psbase/psexception.h"
#include "psmemory/psmemory.h"

template <typename T>
psDefault_NSC<T>::psDefault_NSC(T value, psString name, psString title)
    : psParameter(name, title), m_value(value) {}

template <typename T>
void psDefault_NSC<T>::init(T value, psString name, psString title) {
    psParameter::init(name, title);
    m_value = value;
}

template <typename T>
void psDefault_NSC<T>::reset() {
    psParameter::reset();
    m_value = T{};
}

template <typename T>
psString psDefault_NSC<T>::valueString() const {
    return valueToString(value());
}

template <typename T>
bool psDefault_NSC<T>::isDeprecatedParm() {
    return !m_deprecatedValues.empty();
}

// By text: what a table would show decides which values are the same.
template <typename T>
bool psDefault_NSC<T>::setDeprecatedFlag(bool on) {
    m_deprecatedNow = false;
    if (!on) {
        return false;
    }
    psString const present = valueToString(m_value);
    psStringList::iterator text = m_deprecatedTexts.begin();
    for (T const& deprecated : m_deprecatedValues) {
        if (valueToString(deprecated) == present) {
            m_deprecatedNow = true;
            m_deprecatedText = *text;
            return true;
        }
        ++text;
    }
    return false;
}

template <typename T>
void psDefault_NSC<T>::translate(psString text) {
    m_value = validItem(text);
}

template <typename T>
psString psDefault_NSC<T>::valueToString(T) const {
    return "";
}

template <typename T>
T psDefault_NSC<T>::stringToValue(psString&) const {
    return T{};
}

template <typename T>
T psDefault_NSC<T>::validItem(psString item) {
    T const value = stringToValue(item);
    if (item.errorConvertion()) {
        throw psException(psString("Invalid value of ") + m_name + " = " + item);
    }
    return value;
}

template <typename T>
void psDefault_NSC<T>::addDeprecated(T value, psString text) {
    m_deprecatedValues.insert(m_deprecatedValues.end(), value);
    m_deprecatedTexts.insert(m_deprecatedTexts.end(), text);
}

psString psNumberToString(int value) {
    psString text;
    text << value;
    return text;
}

// The conversion itself does not count a missing number as a failure.
int psStringToNumber(psString& text) {
    int value = 0;
    value << text;
    psString digits = text;
    digits.trim();
    if (digits.empty()) {
        text.setErrorConvertion(true);
    }
    return value;
}

template <typename T>
psString psDefault<T>::valueToString(T value) const {
    return psNumberToString(value);
}

template <typename T>
T psDefault<T>::stringToValue(psString& text) const {
    return psStringToNumber(text);
}

template <typename T>
void psMapDefault<T>::add(T value, psString name) {
    psStringList::iterator oldName = m_mapNames.begin();
    for (T const& known : m_mapValues) {
        if (known == value) {
            *oldName = name;
            return;
        }
        ++oldName;
    }
    m_mapValues.insert(m_mapValues.end(), value);
    m_mapNames.insert(m_mapNames.end(), name);
}

template <typename T>
psString psMapDefault<T>::validString() const {
    psString all;
    char const* separator = "";
    for (psString const& name : m_mapNames) {
        all << separator << name;
        separator = "|";
    }
    return all;
}

template <typename T>
psString psMapDefault<T>::valueToString(T value) const {
    psStringList::const_iterator name = m_mapNames.begin();
    for (T const& known : m_mapValues) {
        if (known == value) {
            return *name;
        }
        ++name;
    }
    return "";
}

template <typename T>
T psMapDefault<T>::stringToValue(psString& text) const {
    psStringList::const_iterator name = m_mapNames.begin();
    for (T const& known : m_mapValues) {
        if (fitString(text, *name, 0)) {
            text.setErrorConvertion(false);
            return known;
        }
        ++name;
    }
    text.setErrorConvertion(true);
    return T{};
}

// The remainder keeps the sign of the value.
int DefaultAlign::validItem(psString item) {
    return psDefault<int>::validItem(item) % PS_ALIGN_MAX;
}

int DefaultShift::validItem(psString item) {
    return psDefault<int>::validItem(item) & -PS_ALIGN_MAX;
}

template class psDefault_NSC<int>;
template class psDefault_NSC<bool>;
template class psDefault_NSC<ZoliSize>;
template class psDefault<int>;
template class psMapDefault<int>;
template class psMapDefault<bool>;
