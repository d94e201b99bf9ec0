// zovector.h - a run of elements of one type in aligned memory, with the fills that tests
// want. Fills with random values are repeatable: the seed is set at each test's start.
#ifndef ZO_ZOVECTOR_H
#define ZO_ZOVECTOR_H

#include "psmemory/psobject.h"
#include "zo/zofunc.h"

class zoVector : public psObject {
public:
    enum SetMode {
        setModeConst = 0,
        setModeConst1 = 1,
        setModeConst2 = 2,
        setModeMax = 3,
        setModeMin = 4,
        setModeConst5 = 5,
        setModeRandom = 6,
        setModeSequence = 7
    };

    zoVector();
    explicit zoVector(zoType type);
    zoVector(zoFunc const& func, zoArg arg);
    zoVector(zoVector const&) = delete;
    zoVector& operator=(zoVector const&) = delete;

    int objectSize() override;
    psString objectInfo() override;
    int reserveCopy() override;
    int setReservedCopy() override;
    void deleteReservedCopy() override;
    ~zoVector() override;
    virtual void deleteVector();
    virtual void setConst();
    virtual void setConst(double re, double im);
    virtual void setConst_64s(long long re, long long im);
    virtual void setMinValue();
    virtual void setMaxValue();
    virtual void setJaehne();
    virtual void setJaehne(double magnitude);
    virtual void setSequence(double first, double step);
    virtual void setSequence(double first, double step, double imaginary, bool wrap);
    virtual void setRandom();
    virtual void setRandom(double low, double high);
    virtual void setRandom(double low, double high, unsigned seed);
    virtual psString getString();
    virtual int size() const { return m_length; }
    virtual void* getReservedData() { return m_reserved; }
    virtual void setVector(int mode, double a, double b, double c);

    bool createVector(int length); // false, told, when there is no memory
    bool createVector(int length, int mode, double a, double b, double c = 0.0);
    void* allocateVector(int length);
    void* data() { return m_data; }
    zoType type() const { return m_type; }
    psString const& name() const { return m_name; }

    static double getMinValue(zoType type);
    static double getMaxValue(zoType type);
    static double getMinAbsValue(zoType type);
    static int elementSize(zoType type);
    static psString getDataString(zoType type, void const* data, int length);
    static psString getByteString(void const* data, int length);

    static unsigned m_seed;

private:
    void init(zoType type, psString const& channels);

    void* m_data = nullptr;     // from the aligned memory
    void* m_reserved = nullptr; // kept copy
    int m_length = 0;           // elements
    psString m_name;
    zoType m_type = 0;
};

#endif
