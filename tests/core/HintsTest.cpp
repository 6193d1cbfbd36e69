#include "core/Hints.h"

#include <gtest/gtest.h>

namespace zw {
namespace {

TEST(Hints, EveryTypedFieldExplainsItselfAndWorkingFieldsStaySilent)
{
    for (FormElement field :
         {FormElement::Text1, FormElement::Text2, FormElement::Text3, FormElement::Text4, FormElement::Text5,
          FormElement::Text6, FormElement::Text7, FormElement::Text8, FormElement::Text9, FormElement::Text10,
          FormElement::Text11, FormElement::Text12, FormElement::Text14, FormElement::RTFBox,
          FormElement::Label1}) {
        SCOPED_TRACE(elementName(field));
        EXPECT_FALSE(hintText(field).empty());
    }
    for (FormElement silent : {FormElement::Text13, FormElement::betrag_duplikat, FormElement::Datum2,
                               FormElement::Label16, FormElement::Count})
        EXPECT_TRUE(hintText(silent).empty());
    EXPECT_EQ(hintText(FormElement::Text5), hintText(FormElement::Text6));
    EXPECT_EQ(hintText(FormElement::Text11), "Hier können Sie keine Eingabe vornehmen!");
}

// The hint line shows hintShown(): how many blanks a run holds is never seen, only that it ends a line.
TEST(Hints, ShownTheRunsOfBlanksEndALineAndSingleBlanksStay)
{
    EXPECT_EQ(hintShown(hintGreeting()),
              "Herzlich willkommen!\nMit dem Zettelwerk können Sie bequem Quittungen ausstellen und drucken.");
    EXPECT_NE(hintShown(hintText(FormElement::Text9)).find("ausgestellt wird.\nTIPP: "), std::string::npos);
    EXPECT_EQ(hintShown("a  b   "), "a  b");
}

} // namespace
} // namespace zw
