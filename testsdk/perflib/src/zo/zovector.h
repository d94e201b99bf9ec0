// zovector.h - a run of elements of one type in aligned memory, with the fills that tests
// want. Fills with random values are repeatable: the seed is set at each test's start.
#ifndef ZO_ZOVECTOR_H
#define ZO_ZOVECTOR_H

#include "psmemory/psobject.h"
#include "zo/zofunc.h"

// Fills take numbers as double. What an element can't hold is set to the nearest limit of its
// type, and integer elements are rounded; infinities and NaN stay in floating elements, and a NaN
// is 0 in integer ones. A fill of a vector without data does nothing.
class zoVector : public psObject {
public:
    // How setVector and createVector fill. The modes 0, 1, 2 and 5 set one value.
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
    static constexpr unsigned startSeed = 7;

    zoVector();
    explicit zoVector(zoType type);
    zoVector(zoFunc const& func, zoArg arg); // type and channels of an argument
    zoVector(zoFunc const& func, int arg);
    zoVector(zoVector const&) = delete;
    zoVector& operator=(zoVector const&) = delete;

    int objectSize() override;
    psString objectInfo() override;
    int reserveCopy() override;
    int setReservedCopy() override;
    void deleteReservedCopy() override;
    ~zoVector() override;
    virtual void deleteVector();
    virtual void setConst(); // all zero
    virtual void setConst(double re, double im);
    virtual void setConst_64s(long long re, long long im); // exact for 64-bit elements
    virtual void setMinValue();
    virtual void setMaxValue();
    virtual void setJaehne(); // with the largest magnitude
    // A chirp from slow to fast. A negative magnitude fills nothing.
    virtual void setJaehne(double magnitude);
    virtual void setSequence(double first, double step);
    // With wrap, the sequence starts again at first where it would leave the type's limits.
    virtual void setSequence(double first, double step, double imaginary, bool wrap);
    virtual void setRandom(); // -1 to 1, integers over their whole range
    virtual void setRandom(double low, double high);
    virtual void setRandom(double low, double high, unsigned seed);
    virtual psString getString();
    virtual int size() const { return m_length; }
    virtual void* getReservedData() { return m_reserved; }
    // By a SetMode. Random: from a to b, both 0 for setRandom(). Sequence: first, step, imaginary.
    virtual void setVector(int mode, double a, double b, double c);
    virtual void setIndex();            // each element its own index
    virtual double getIndex(int index); // real part of an element; 0 outside the vector
    virtual void getIndex(int index, double& re, double& im);
    virtual void const* getDataConst() { return m_data; }

    bool createVector(int length); // false, told, when there is no memory
    bool createVector(int length, int mode, double a, double b, double c = 0.0);
    void* allocateVector(int length); // a block with this object as owner; null, told, without
    void* data() { return m_data; }
    zoType type() const { return m_type; }
    psString const& name() const { return m_name; }

    // Limits of a type, of a complex type those of its component; 0 for an unknown code.
    static double getMinValue(zoType type);
    static double getMaxValue(zoType type);
    static double getMinAbsValue(zoType type); // the smallest positive magnitude (normal)
    static int elementSize(zoType type);       // bytes; 0 for an unknown code
    static psString getDataString(zoType type, void const* data, int length);
    static psString getByteString(void const* data, int length); // each " %02X"

    // Makes a magnitude fit the type and gives the middle of the swing; false if it is negative.
    static bool updateJaehneMagn(zoType type, double& magnitude, double& offset);

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
