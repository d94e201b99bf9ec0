// psiterator.h - parameters with a series of values: lists such as "64; 256; 1024" and
// loops such as "64; 65536; *2".
#ifndef PSPARAMETER_PSITERATOR_H
#define PSPARAMETER_PSITERATOR_H

#include "psparameter/psdefault.h"

// A list of values. m_value holds the one that the iteration stands on.
template <typename T>
class psIterator_NSC : public psDefault_NSC<T>, public psList<T> {
public:
    psIterator_NSC() = default;
    ~psIterator_NSC() override = default;
    void init(psString name); // forgets all values

    void reset() override;
    psString defaultString() const override;
    bool nextValue() override;
    // A bad word leaves the old list whole. An iteration begun before has to start anew.
    void translate(psString text) override;

    virtual void add(T value); // at the end; the iteration stays where it is

    psString listDescr(psList<T> const& list, psString separator) const;

protected:
    typename psList<T>::iterator m_current;
};

// A list of numbers or sizes, with their conversion from and to text. For int and ZoliSize.
template <typename T>
class psIterator : public psIterator_NSC<T> {
public:
    psString valueToString(T value) const override;
    T stringToValue(psString& text) const override;
};

// A size as text is "width x height" without the blanks, both decimal.
template <>
psString psIterator<ZoliSize>::valueToString(ZoliSize value) const;
template <>
ZoliSize psIterator<ZoliSize>::stringToValue(psString& text) const;

// The values are the characters themselves; '?' means no stepping.
enum StepOprtn : char { StepAdd = '+', StepSub = '-', StepMul = '*', StepNone = '?' };

// Three words whose third begins with an operation are a loop; all else is a list.
template <typename T>
class psStepIterator : public psIterator<T> {
public:
    psStepIterator() = default;
    // Both throw psException on limits that the operation never reaches.
    void init(psString name, int first, int last, int step, StepOprtn operation);
    void init(int first, int last, int step, StepOprtn operation, psString name);

    psString defaultString() const override;
    psString description() const override;
    psString prompt() const override;
    bool nextValue() override;
    void translate(psString text) override;

    void validate(); // its own fields
    void validate(int first, int last, int& step, StepOprtn& operation, bool& isDescending) const;
    bool translateStep(psString text); // false if the text is no loop; throws on a bad one

private:
    int convert(psString& word, char const* complaint) const; // throws the complaint and the word

    int m_first = 0;
    int m_last = 0;
    int m_step = 0;
    StepOprtn m_operation = StepNone;
    bool m_descending = false;
};

extern template class psIterator_NSC<int>;
extern template class psIterator<int>;
extern template class psIterator_NSC<ZoliSize>;
extern template class psIterator<ZoliSize>;
extern template class psStepIterator<int>;

#endif
