// vtsblocks_test.cpp - every line of all 392 blocks through the reader, and the results that
// the special lines name against the library.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "vts/vtslines.h"
#include "vts/vtsspecial.h"
#include "vtsfixture.h"
#include "zolcore.h"

namespace {

class VtsBlocks : public VtsFixture {
protected:
    VtsBlocks() {
        defParam.valuesExclude[0] = '\0'; // lines of enhanced performance too
        zolInit();
        vtsAllocData();
    }

    // A row and what is needed to call its function.
    struct Row {
        explicit Row(int index) : number(index), type(vtsGetFuncType(index)) {
            char name[vtsNameSize];
            vtsGetFuncName(index, name);
            tag = name;
        }
        bool isSingle() const { return (type & vtsSingle) != 0; }
        // Relative error that a finite result may have, by type and accuracy.
        double tolerance() const {
            bool const fast = tag.find("_EP") != std::string::npos;
            return isSingle() ? (fast ? 2e-3 : 4e-6) : (fast ? 1e-7 : 4e-15);
        }
        int number;
        int type;
        std::string tag;
    };

    std::vector<double> result1;
    std::vector<double> result2;

    // Calls the row's function on the arrays that the reader filled.
    void call(Row const& row) {
        size_t const values = 2 * static_cast<size_t>(defData.n);
        result1.assign(values, 0.0);
        result2.assign(values, 0.0);
        auto const function = defFunc[row.number].func;
        if ((row.type & vtsShapeMask) == vtsShapeUnary) {
            using Call = ZolStatus (*)(void*, void*, int);
            reinterpret_cast<Call>(function)(defData.arg1, result1.data(), defData.n);
        } else {
            bool const two = (row.type & vtsShapeMask) == vtsShapeTwoResults;
            void* const second = two ? static_cast<void*>(result1.data()) : defData.arg2;
            void* const last = two ? result2.data() : result1.data();
            using Call = ZolStatus (*)(void*, void*, void*, int);
            reinterpret_cast<Call>(function)(defData.arg1, second, last, defData.n);
        }
    }

    static double at(Row const& row, std::vector<double> const& results, int index) {
        return row.isSingle()
                   ? static_cast<double>(reinterpret_cast<float const*>(results.data())[index])
                   : results[static_cast<size_t>(index)];
    }

    static double constant(Row const& row, std::string const& name) {
        return row.isSingle() ? std::bit_cast<float>(vtssGetSpecialValue(name.c_str()))
                              : std::bit_cast<double>(vtsdGetSpecialValue(name.c_str()));
    }

    // Zeros and infinities have to be exact; a zero beside a finite part may be off by that
    // part's error.
    static bool agrees(double got, double wanted, double other, double tolerance) {
        if (std::isnan(wanted)) {
            return std::isnan(got);
        }
        if (std::isinf(wanted)) {
            return got == wanted;
        }
        if (wanted == 0.0) {
            bool const besideFinite = std::isfinite(other) && other != 0.0;
            return got == 0.0 ? std::signbit(got) == std::signbit(wanted)
                              : besideFinite && std::fabs(got) <= tolerance * std::fabs(other);
        }
        return std::fabs(got - wanted) <= tolerance * std::fabs(wanted);
    }

    // Place of the first element of a result array that is not what the name says, -1 if none.
    static int firstMiss(Row const& row, std::vector<double> const& results, char const* name) {
        std::string const text = name;
        size_t const joint = text.find("_i");
        bool const pair = joint != std::string::npos;
        double const wanted[] = {constant(row, text.substr(0, joint)),
                                 constant(row, pair ? text.substr(joint + 2) : "PZERO")};
        int const width = pair ? 2 : 1;
        for (int i = 0; i < width * defData.n; ++i) {
            int const half = i % width;
            if (!agrees(at(row, results, i), wanted[half], wanted[1 - half], row.tolerance())) {
                return i;
            }
        }
        return -1;
    }

    void checkSpecial(Row const& row) {
        EXPECT_TRUE(std::all_of(defData.errCodes, defData.errCodes + defData.n,
                                [](int code) { return code == vtssGetErrCode(defData.errName); }));
        EXPECT_EQ(strstr(defData.resName1, "_i") != nullptr, (row.type & vtsComplexResult) != 0);
        call(row);
        int const miss = firstMiss(row, result1, defData.resName1);
        EXPECT_EQ(miss, -1) << defData.resName1 << " but " << at(row, result1, std::max(miss, 0));
        if ((row.type & vtsShapeMask) == vtsShapeTwoResults) {
            EXPECT_EQ(firstMiss(row, result2, defData.resName2), -1) << defData.resName2;
        }
    }
};

} // namespace

TEST_F(VtsBlocks, EveryLineIsReadAndTheLibraryAgrees) {
    int specials = 0;
    for (int number = 0; number < vtsNumFuncs; ++number) {
        Row const row(number);
        vtsBeginFillData(number);
        while (vtsFillData(number) == 1) {
            SCOPED_TRACE(row.tag + " " + defData.valuesType + " " + defData.valuesName);
            if (defData.assignType == vtsAssignSpecial) {
                EXPECT_STREQ(defData.valuesType, "Special");
                ++specials;
                checkSpecial(row);
            } else if (defData.assignType != vtsAssignInterval) {
                EXPECT_EQ(defData.assignType, vtsAssignFixed);
                EXPECT_STREQ(defData.valuesType, "Fixed");
            }
        }
        std::string const text = defFunc[number].text;
        EXPECT_EQ(defData.valuesCount, std::count(text.begin(), text.end(), '=')) << row.tag;
        EXPECT_STREQ(defData.valuesType, "Special") << row.tag; // each block has the section
    }
    EXPECT_GT(specials, 392 * 3);
    EXPECT_EQ(printed, ""); // no unknown name
}
