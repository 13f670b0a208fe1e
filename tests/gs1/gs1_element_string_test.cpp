#include "gs1/gs1_element_string.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Readable(std::string_view input) {
  return HumanReadable(ReadElementString(input));
}

TEST(Gs1ElementString, TakesMarkersOutUntilNoneIsLeft) {
  EXPECT_EQ(ReadElementString("{AI}01{AI}23").text, "0123");
  EXPECT_EQ(ReadElementString("0{A{A{AI}I}I}1").text, "01");
  EXPECT_EQ(ReadElementString("{AI").text, "{AI");
  EXPECT_EQ(ReadElementString("{ai}").text, "{ai}");
  EXPECT_THAT(ReadElementString("{AI}01{AI}23").markedAis, ElementsAre(0, 2));
  EXPECT_THAT(ReadElementString("0{A{A{AI}I}I}1").markedAis, ElementsAre(1));
  EXPECT_THAT(ReadElementString("01{AI}").markedAis, IsEmpty());
}

TEST(Gs1ElementString, SeparatorsStandBetweenFields) {
  EXPECT_EQ(ReadElementString("10A{FNC1}21B").text,
            "10A\x1D"
            "21B");
  EXPECT_EQ(ReadElementString("10A{FN{AI}C1}21B").text,
            "10A\x1D"
            "21B");
  EXPECT_EQ(ReadElementString("{FNC1}\x1D{FNC1}10A{FNC1}{FNC1}").text, "10A");
  EXPECT_THAT(ReadElementString("{AI}{FNC1}{AI}10A{AI}{FNC1}").markedAis, ElementsAre(0));
  EXPECT_EQ(ReadElementString("{FNC1}").text, "");
}

TEST(Gs1ElementString, ParsesByTheGs1Lengths) {
  EXPECT_EQ(Readable("0195011015300038"), "(01)95011015300038");
  EXPECT_EQ(Readable("01950110153000383103001750"), "(01)95011015300038(3103)001750");
  EXPECT_EQ(Readable("001234567890123456754149501101530003"
                     "10A"),
            "(00)123456789012345675(414)9501101530003(10)A");
  EXPECT_EQ(Readable("1112123120"
                     "55240X"),
            "(11)121231(20)55(240)X");
  EXPECT_EQ(Readable("3922795{FNC1}4305X{FNC1}710Y{FNC1}8005000001{FNC1}37"
                     "5"),
            "(3922)795(4305)X(710)Y(8005)000001(37)5");
  EXPECT_EQ(Readable("17150101{FNC1}10A"), "(17)150101(10)A");
}

TEST(Gs1ElementString, ShowsTheRestAsItIs) {
  EXPECT_EQ(Readable("HELLO"), "HELLO");
  EXPECT_EQ(Readable("01123"), "01123");
  EXPECT_EQ(Readable("0195011015300A38"), "0195011015300A38");
  EXPECT_EQ(Readable("1715010145X{FNC1}10A"), "(17)15010145X(10)A");
  EXPECT_EQ(Readable("310"), "310");
  EXPECT_EQ(Readable("1"), "1");
  EXPECT_EQ(Readable(""), "");
}

TEST(Gs1ElementString, MarkersSayWhereAisBegin) {
  EXPECT_EQ(Readable("{AI}10A{AI}21B"), "(10)A(21)B");
  EXPECT_EQ(Readable("{AI}10A{FNC1}{AI}21B{FNC1}30"
                     "7"),
            "(10)A(21)B(30)7");
  EXPECT_EQ(Readable("{AI}019501101530003817150101"), "(01)9501101530003817150101");
  EXPECT_EQ(Readable("{AI}{AI}10A{AI}{FNC1}{AI}{AI}21B"), "(10)A(21)B");
  EXPECT_EQ(Readable("{AI}ABC{AI}10D"), "ABC(10)D");
  EXPECT_EQ(Readable("X{AI}10D"), "X(10)D");
}

}  // namespace
}  // namespace barcode
