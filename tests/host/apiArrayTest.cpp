#include <gtest/gtest.h>
#include <hostPrivate/arrayPoison.h>
#include <maya/MColorArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFloatPointArray.h>
#include <maya/MFloatVectorArray.h>
#include <maya/MIntArray.h>
#include <maya/MMatrixArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>
#include <maya/MUint64Array.h>
#include <maya/MUintArray.h>
#include <maya/MVectorArray.h>

#include <initializer_list>
#include <locale>
#include <random>
#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

/// The array class under test, its element type, and an element that differs for every number.
template <typename ArrayClass, typename ElementType>
struct Kind {
    using Array = ArrayClass;
    using Element = ElementType;

    static Element element(int number) {
        if constexpr (std::is_arithmetic_v<Element>) {
            return static_cast<Element>(number);
        } else if constexpr (std::is_same_v<Element, MString>) {
            return MString("element ") + number;
        } else if constexpr (std::is_same_v<Element, MMatrix>) {
            return MMatrix() * static_cast<double>(number);
        } else if constexpr (std::is_same_v<Element, MPoint> || std::is_same_v<Element, MVector>) {
            return Element(number, 2.0 * number, -number);
        } else {
            return Element(static_cast<float>(number), static_cast<float>(2 * number),
                           static_cast<float>(-number));
        }
    }
};

/// Whether an element is one that no calculation survives; texts are just empty.
template <typename Element>
bool isUnset(const Element& element) {
    if constexpr (std::is_integral_v<Element>) {
        const auto number = static_cast<std::make_signed_t<Element>>(element);
        return number < -1000000000;
    } else if constexpr (std::is_same_v<Element, MString>) {
        return element.length() == 0;
    } else {
        return !(element == element);
    }
}

template <typename K>
class MArrays : public testing::Test {
  protected:
    using Array = typename K::Array;
    using Element = typename K::Element;

    static Array make(std::initializer_list<int> numbers) {
        Array array;
        for (const int number : numbers) {
            array.append(K::element(number));
        }
        return array;
    }

    static void expectNumbers(const Array& array, const std::vector<int>& numbers) {
        ASSERT_EQ(array.length(), numbers.size());
        for (unsigned int i = 0; i < array.length(); ++i) {
            EXPECT_TRUE(array[i] == K::element(numbers[i])) << "at " << i;
        }
    }
};

using Kinds =
    testing::Types<Kind<MIntArray, int>, Kind<MUintArray, unsigned int>, Kind<MUint64Array, MUint64>,
                   Kind<MFloatArray, float>, Kind<MDoubleArray, double>, Kind<MStringArray, MString>,
                   Kind<MPointArray, MPoint>, Kind<MVectorArray, MVector>,
                   Kind<MFloatPointArray, MFloatPoint>, Kind<MFloatVectorArray, MFloatVector>,
                   Kind<MColorArray, MColor>, Kind<MMatrixArray, MMatrix>>;
// The empty argument keeps pedantic compilers content with the macro.
TYPED_TEST_SUITE(MArrays, Kinds, );

TYPED_TEST(MArrays, startEmptyOrWithTheGivenElements) {
    using List = typename TypeParam::Array;
    using Item = typename TypeParam::Element;
    EXPECT_EQ(List().length(), 0U);
    const Item source[] = {TypeParam::element(4), TypeParam::element(5), TypeParam::element(6)};
    if constexpr (!std::is_same_v<Item, MMatrix>) {
        this->expectNumbers(List(source, 2), {4, 5});
        this->expectNumbers(List(3, TypeParam::element(7)), {7, 7, 7});
    }
}

// The API promises no value for such elements: what counts on zeros has to show.
TYPED_TEST(MArrays, elementsWithoutAValueAreUnset) {
    using Item = typename TypeParam::Element;
    const bool wasOn = host::api::isArrayPoisonOn();
    for (const bool isOn : {true, false}) {
        host::api::setArrayPoison(isOn);
        auto array = this->make({1});
        EXPECT_EQ(array.setLength(3), MS::kSuccess);
        if constexpr (!std::is_same_v<Item, MString>) array.insert(typename TypeParam::Array(1)[0], 3);
        const unsigned int length = array.length();
        ASSERT_GE(length, 3U);
        EXPECT_TRUE(array[0] == TypeParam::element(1));
        for (unsigned int k = 1; k < length; ++k)
            EXPECT_TRUE(isOn ? isUnset<Item>(array[k]) : array[k] == Item()) << k;
        array.setLength(1);
        this->expectNumbers(array, {1});
    }
    host::api::setArrayPoison(wasOn);
}

TYPED_TEST(MArrays, copiesAreIndependent) {
    auto array = this->make({1, 2, 3});
    typename TypeParam::Array copy(array);
    typename TypeParam::Array assigned;
    assigned = array;
    typename TypeParam::Array copied = this->make({9});
    constexpr bool kCopies = !std::is_same_v<typename TypeParam::Element, MString>;
    if constexpr (kCopies) {
        EXPECT_EQ(copied.copy(array), MS::kSuccess);
    } else {
        copied = array;
    }
    array[0] = TypeParam::element(8);
    array.append(TypeParam::element(4));
    this->expectNumbers(array, {8, 2, 3, 4});
    this->expectNumbers(copy, {1, 2, 3});
    this->expectNumbers(assigned, {1, 2, 3});
    this->expectNumbers(copied, {1, 2, 3});
    if constexpr (kCopies) copied.copy(copied);
    this->expectNumbers(copied, {1, 2, 3});
    const typename TypeParam::Array moved(std::move(copied));
    this->expectNumbers(moved, {1, 2, 3});
}

TYPED_TEST(MArrays, insertAndRemoveShiftTheRest) {
    auto array = this->make({1, 2, 3});
    EXPECT_EQ(array.insert(TypeParam::element(10), 0), MS::kSuccess);
    EXPECT_EQ(array.insert(TypeParam::element(11), 2), MS::kSuccess);
    EXPECT_EQ(array.insert(TypeParam::element(12), array.length()), MS::kSuccess);
    this->expectNumbers(array, {10, 1, 11, 2, 3, 12});
    EXPECT_EQ(array.remove(0), MS::kSuccess);
    EXPECT_EQ(array.remove(4), MS::kSuccess);
    EXPECT_EQ(array.remove(1), MS::kSuccess);
    this->expectNumbers(array, {1, 2, 3});
    EXPECT_EQ(array.clear(), MS::kSuccess);
    EXPECT_EQ(array.length(), 0U);
}

TYPED_TEST(MArrays, badIndicesFailAndChangeNothing) {
    auto array = this->make({1, 2, 3});
    const auto element = TypeParam::element(9);
    const auto minusOne = static_cast<unsigned int>(-1);
    for (const unsigned int bad : {3U, 100U, minusOne}) {
        EXPECT_EQ(array.set(element, bad), MS::kInvalidParameter);
        EXPECT_EQ(array.remove(bad), MS::kInvalidParameter);
    }
    EXPECT_EQ(array.insert(element, 4), MS::kInvalidParameter);
    this->expectNumbers(array, {1, 2, 3});
    typename TypeParam::Array empty;
    EXPECT_EQ(empty.remove(0), MS::kInvalidParameter);
    EXPECT_EQ(empty.set(element, 0), MS::kInvalidParameter);
}

TYPED_TEST(MArrays, setReplacesOneElement) {
    auto array = this->make({1, 2, 3});
    EXPECT_EQ(array.set(TypeParam::element(7), 1), MS::kSuccess);
    array[2] = TypeParam::element(8);
    this->expectNumbers(array, {1, 7, 8});
}

TYPED_TEST(MArrays, lengthGrowsAndShrinksAtTheEnd) {
    auto array = this->make({1, 2, 3});
    EXPECT_EQ(array.setLength(5), MS::kSuccess);
    ASSERT_EQ(array.length(), 5U);
    EXPECT_TRUE(array[0] == TypeParam::element(1));
    EXPECT_EQ(array.setLength(2), MS::kSuccess);
    this->expectNumbers(array, {1, 2});
}

TYPED_TEST(MArrays, takeTheirOwnElementsAsArguments) {
    auto array = this->make({1, 2});
    for (int i = 0; i < 30; ++i) {
        array.append(array[0]);
    }
    ASSERT_EQ(array.length(), 32U);
    EXPECT_TRUE(array[31] == TypeParam::element(1));
    array.insert(array[1], 0);
    EXPECT_TRUE(array[0] == TypeParam::element(2));
}

TYPED_TEST(MArrays, sizeIncrementIsKeptAndHarmless) {
    auto array = this->make({1});
    array.setSizeIncrement(64);
    EXPECT_EQ(array.sizeIncrement(), 64U);
    for (int i = 2; i <= 200; ++i) {
        array.append(TypeParam::element(i));
    }
    ASSERT_EQ(array.length(), 200U);
    EXPECT_TRUE(array[0] == TypeParam::element(1));
    EXPECT_TRUE(array[199] == TypeParam::element(200));
    array.setSizeIncrement(0);
    array.append(TypeParam::element(201));
    EXPECT_TRUE(array[200] == TypeParam::element(201));
}

TYPED_TEST(MArrays, canBeWalkedWithARangeLoop) {
    if constexpr (!std::is_same_v<typename TypeParam::Element, MMatrix>) {
        auto array = this->make({3, 1, 2});
        unsigned int position = 0;
        for (const auto& element : std::as_const(array)) {
            EXPECT_TRUE(element == array[position++]);
        }
        EXPECT_EQ(position, 3U);
        auto last = array.cend();
        --last;
        EXPECT_TRUE(*last == TypeParam::element(2));
        for (auto& element : array) {
            element = TypeParam::element(5);
        }
        this->expectNumbers(array, {5, 5, 5});
    }
}

TYPED_TEST(MArrays, fillCArrays) {
    using Item = typename TypeParam::Element;
    if constexpr (std::is_arithmetic_v<Item> || std::is_same_v<Item, MString>) {
        const auto array = this->make({6, 7});
        Item filled[3] = {TypeParam::element(0), TypeParam::element(0), TypeParam::element(99)};
        EXPECT_EQ(array.get(filled), MS::kSuccess);
        EXPECT_TRUE(filled[0] == TypeParam::element(6));
        EXPECT_TRUE(filled[1] == TypeParam::element(7));
        EXPECT_TRUE(filled[2] == TypeParam::element(99)) << "nothing is written beyond the length";
    }
}

// A long random life against a plain vector; finds shifts by one that small examples do not.
TYPED_TEST(MArrays, behaveLikeAPlainListThroughARandomLife) {
    std::mt19937 random(7);
    typename TypeParam::Array array;
    std::vector<int> model;
    for (int step = 0; step < 600; ++step) {
        const int number = static_cast<int>(random() % 1000);
        const auto index = static_cast<unsigned int>(random() % (model.size() + 1));
        const bool inside = index < model.size();
        const auto position = model.begin() + static_cast<std::ptrdiff_t>(index);
        switch (random() % 5) {
            case 0:
                array.append(TypeParam::element(number));
                model.push_back(number);
                break;
            case 1:
            case 2:
                array.insert(TypeParam::element(number), index);
                model.insert(position, number);
                break;
            case 3:
                EXPECT_EQ(array.remove(index).error(), !inside);
                if (inside) model.erase(position);
                break;
            default:
                EXPECT_EQ(array.set(TypeParam::element(number), index).error(), !inside);
                if (inside) *position = number;
        }
    }
    this->expectNumbers(array, model);
}

/// Arrays of tuples also come from and go to rows of numbers.
template <typename Array, typename Number, int width>
void expectRowsToRoundTrip() {
    const Number rows[2][width] = {{1, 2, 3}, {-4, 5, -6}};
    const Array array(rows, 2);
    ASSERT_EQ(array.length(), 2U);
    EXPECT_EQ(array[1].operator[](0), -4);
    Number back[2][width] = {};
    EXPECT_EQ(array.get(back), MS::kSuccess);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < width; ++column) {
            EXPECT_EQ(back[row][column], rows[row][column]);
        }
    }
}

TEST(ArrayForms, tuplesRoundTripThroughRowsOfNumbers) {
    expectRowsToRoundTrip<MPointArray, double, 4>();
    expectRowsToRoundTrip<MPointArray, float, 4>();
    expectRowsToRoundTrip<MFloatPointArray, double, 4>();
    expectRowsToRoundTrip<MFloatPointArray, float, 4>();
    expectRowsToRoundTrip<MVectorArray, double, 3>();
    expectRowsToRoundTrip<MVectorArray, float, 3>();
    expectRowsToRoundTrip<MFloatVectorArray, double, 3>();
    expectRowsToRoundTrip<MFloatVectorArray, float, 3>();
    expectRowsToRoundTrip<MColorArray, float, 4>();
}

TEST(ArrayForms, pointsAreTakenAsCoordinates) {
    MPointArray points;
    points.append(1, 2, 3);
    points.append(4, 5, 6, 2);
    EXPECT_TRUE(points[0] == MPoint(1, 2, 3, 1));
    EXPECT_TRUE(points[1] == MPoint(4, 5, 6, 2));
    EXPECT_EQ(points.set(1, 7, 8, 9), MS::kSuccess);
    EXPECT_TRUE(points[1] == MPoint(7, 8, 9, 1));
    EXPECT_EQ(points.set(2, 7, 8, 9), MS::kInvalidParameter);
}

TEST(ArrayForms, writeTheirElementsInBrackets) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    const int numbers[] = {1, -2, 3};
    out << MIntArray(numbers, 3) << MIntArray() << MDoubleArray(1, 0.5) << MStringArray(2, "a")
        << MPointArray(1, MPoint(1, 2, 3));
    EXPECT_EQ(out.str(), "[1, -2, 3][][0.5][a, a][[1, 2, 3, 1]]");
}

}  // namespace
