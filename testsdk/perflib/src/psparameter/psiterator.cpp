// psiterator.cpp - grammar and stepping of lists and loops.
#include "psparameter/psiterator.h"

#include <limits>

#include "psbase/psexception.h"

template <typename T>
void psIterator_NSC<T>::init(psString name) {
    reset();
    psDefault_NSC<T>::init(T{}, name, "");
}

template <typename T>
void psIterator_NSC<T>::reset() {
    psDefault_NSC<T>::reset();
    m_current = typename psList<T>::iterator();
    this->clear();
}

template <typename T>
psString psIterator_NSC<T>::defaultString() const {
    return listDescr(*this, "; ");
}

template <typename T>
bool psIterator_NSC<T>::nextValue() {
    if (this->m_iterating) {
        ++m_current;
    } else {
        m_current = this->begin();
    }
    this->m_iterating = m_current != this->end();
    this->m_value = this->m_iterating ? *m_current : T{};
    return this->m_iterating;
}

template <typename T>
void psIterator_NSC<T>::translate(psString text) {
    psStringList words;
    if (text.parse(words, ";") == 0) {
        throw psException(psString("Empty iterator definition"));
    }
    psList<T> values;
    for (psString& word : words) {
        word.trim();
        values.insert(values.end(), this->validItem(word));
    }
    this->swap(values);
}

template <typename T>
void psIterator_NSC<T>::add(T value) {
    this->insert(this->end(), value);
}

template <typename T>
psString psIterator_NSC<T>::listDescr(psList<T> const& list, psString separator) const {
    psString all;
    bool first = true;
    for (T const& value : list) {
        if (!first) {
            all << separator;
        }
        all << this->valueToString(value);
        first = false;
    }
    return all;
}

template <typename T>
psString psIterator<T>::valueToString(T value) const {
    return psNumberToString(value);
}

template <typename T>
T psIterator<T>::stringToValue(psString& text) const {
    return psStringToNumber(text);
}

template <>
psString psIterator<ZoliSize>::valueToString(ZoliSize value) const {
    psString text;
    return text << value.width << "x" << value.height;
}

template <>
ZoliSize psIterator<ZoliSize>::stringToValue(psString& text) const {
    psString width;
    psString height;
    text.parse(width, height, "x");
    ZoliSize const value{psStringToNumber(width), psStringToNumber(height)}; // empty: no number
    text.setErrorConvertion(width.errorConvertion() || height.errorConvertion());
    return value;
}

template <typename T>
void psStepIterator<T>::init(psString name, int first, int last, int step, StepOprtn operation) {
    psIterator_NSC<T>::init(name);
    m_first = first;
    m_last = last;
    m_step = step;
    m_operation = operation;
    validate();
}

template <typename T>
void psStepIterator<T>::init(int first, int last, int step, StepOprtn operation, psString name) {
    init(name, first, last, step, operation);
}

template <typename T>
psString psStepIterator<T>::defaultString() const {
    if (m_operation == StepNone) {
        return psIterator<T>::defaultString();
    }
    psString text;
    text << m_first << "; " << m_last << "; " << static_cast<char>(m_operation) << m_step;
    return text;
}

template <typename T>
psString psStepIterator<T>::description() const {
    if (m_operation == StepNone) {
        return psIterator<T>::description();
    }
    psString text;
    text << "for (" << this->m_name << " = " << m_first << "; " << this->m_name
         << (m_descending ? " >= " : " <= ") << m_last << "; " << this->m_name << " "
         << static_cast<char>(m_operation) << "= " << m_step << ")";
    return text;
}

template <typename T>
psString psStepIterator<T>::prompt() const {
    return m_operation == StepNone ? this->m_name : psString("for ") + this->m_name;
}

template <typename T>
bool psStepIterator<T>::nextValue() {
    if (m_operation == StepNone) {
        return psIterator<T>::nextValue();
    }
    if (!this->m_iterating) {
        this->m_value = m_first;
    } else {
        long long next = this->m_value;
        switch (m_operation) {
        case StepAdd:
            next += m_step;
            break;
        case StepSub:
            next -= m_step;
            break;
        default:
            next *= m_step;
            break;
        }
        // A value outside int lies beyond any limit: the loop is over, the value stays.
        if (next > std::numeric_limits<T>::max() || next < std::numeric_limits<T>::min()) {
            this->m_iterating = false;
            return false;
        }
        this->m_value = static_cast<T>(next);
    }
    this->m_iterating = m_descending ? this->m_value >= m_last : this->m_value <= m_last;
    return this->m_iterating;
}

template <typename T>
void psStepIterator<T>::translate(psString text) {
    if (!translateStep(text)) {
        psIterator<T>::translate(text);
        m_operation = StepNone;
    }
}

template <typename T>
void psStepIterator<T>::validate() {
    validate(m_first, m_last, m_step, m_operation, m_descending);
}

// A step of zero passes where a negative one would, and the loop never ends; equal negative limits
// count as shrinking under '*', equal positive ones do not. Both belong to the rule.
template <typename T>
void psStepIterator<T>::validate(int first, int last, int& step, StepOprtn& operation,
                                 bool& isDescending) const {
    isDescending = first > last;
    bool accepted = true;
    if (operation == StepAdd) {
        accepted = (step >= 1) != isDescending;
    } else if (operation == StepSub) {
        accepted = (step >= 1) == isDescending;
    } else if (operation == StepMul) {
        bool const growsUp = first > 0 && last > 0 && !isDescending;
        bool const growsDown = first < 0 && last < 0 && isDescending;
        accepted = (growsUp || growsDown) && step > 1;
    }
    if (!accepted) {
        throw psException(psString("Conflict between iterator limits and operation"));
    }
}

template <typename T>
bool psStepIterator<T>::translateStep(psString text) {
    psString firstWord;
    psString lastWord;
    psString stepWord;
    if (text.parse(firstWord, lastWord, stepWord, "; ") != 3) {
        return false;
    }
    char const letter = stepWord[0];
    if (letter != StepAdd && letter != StepSub && letter != StepMul) {
        return false;
    }
    StepOprtn operation = static_cast<StepOprtn>(letter);
    stepWord = stepWord.substr(1);

    int const first = convert(firstWord, "Invalid first value = ");
    int const last = convert(lastWord, "Invalid last value = ");
    int step = convert(stepWord, "Invalid step = ");
    bool descending = false;
    validate(first, last, step, operation, descending);

    m_first = first;
    m_last = last;
    m_step = step;
    m_operation = operation;
    m_descending = descending;
    return true;
}

template <typename T>
int psStepIterator<T>::convert(psString& word, char const* complaint) const {
    int const value = this->stringToValue(word);
    if (word.errorConvertion()) {
        throw psException(psString(complaint) + word);
    }
    return value;
}

template class psIterator_NSC<int>;
template class psIterator<int>;
template class psIterator_NSC<ZoliSize>;
template class psIterator<ZoliSize>;
template class psStepIterator<int>;
