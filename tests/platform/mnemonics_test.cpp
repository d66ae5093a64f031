#include "platform/mnemonics.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>

#include "dialog/designed_items.h"

namespace mervane::platform {
namespace {

using Captions = std::vector<std::string>;

TEST(Mnemonics, TheFirstLetterOfAWordIsPreferredAndEarlierCaptionsChooseFirst) {
  EXPECT_EQ(withMnemonics({"Close", "Clusters:", "Draw charts", "Data"}, '~'),
            (Captions{"~Close", "C~lusters:", "~Draw charts", "D~ata"}));
}

TEST(Mnemonics, ALaterWordIsTakenBeforeALetterWithinAWord) {
  EXPECT_EQ(withMnemonics({"Set", "Set colors"}, '~'), (Captions{"~Set", "Set ~colors"}));
}

TEST(Mnemonics, ACaptionWhoseLettersAreAllTakenSharesTheOneThatFewestHave) {
  EXPECT_EQ(withMnemonics({"a", "A", "", "12"}, '~'), (Captions{"~a", "~A", "", "12"}));
  EXPECT_EQ(withMnemonics({"a", "b", "a", "ab", "ba"}, '~'), (Captions{"~a", "~b", "~a", "a~b", "~ba"}));
}

TEST(Mnemonics, TheLettersOfSomeCaptionsAreSharedWithNone) {
  EXPECT_EQ(withMnemonics({"a", "b", "a", "ab", "a"}, '~', 1), (Captions{"~a", "~b", "a", "a~b", "a"}));
  EXPECT_EQ(withMnemonics({"a", "a", "b"}, '~', 2), (Captions{"~a", "a", "~b"}));
}

TEST(Mnemonics, TheButtonsOfAWindowChooseFirstAndALabelHasNoLetter) {
  const auto item = [](const char* caption, OptionKind kind) {
    OptionItem one;
    one.Caption = caption;
    one.kind = kind;
    return one;
  };
  const OptionItems buttons({item("Close", OptionKind::command)});
  const OptionItems options(
      {item("Results", OptionKind::staticLabel), item("Colors", OptionKind::check), item("Rows", OptionKind::edit)});
  const MarkedCaptions marked = markedCaptions(buttons, options, '&');
  EXPECT_EQ(marked.buttons, Captions{"&Close"});
  EXPECT_EQ(marked.options, (Captions{"", "C&olors", "&Rows"}));
  const MarkedCaptions more = markedCaptions(buttons, options, '&', {"Rest", "Close"});
  EXPECT_EQ(more.buttons, Captions{"&Close"});
  EXPECT_EQ(more.ownButtons, (Captions{"&Rest", "C&lose"}));
  EXPECT_EQ(more.options, (Captions{"", "C&olors", "Ro&ws"}));
}

TEST(Mnemonics, EveryOptionOfTheDialogHasALetterAndTheButtonsHaveTheirsAlone) {
  const auto buttons = dialog::designedButtons();
  const auto options = dialog::designedOptions();
  const MarkedCaptions marked = markedCaptions(buttons, options, '~', {"Help"});
  std::map<char, int> owners;
  const auto letterIn = [](const std::string& caption) {
    const std::size_t at = caption.find('~');
    return at == std::string::npos ? '\0'
                                   : static_cast<char>(std::tolower(static_cast<unsigned char>(caption.at(at + 1))));
  };
  for (const auto* captions : {&marked.buttons, &marked.ownButtons, &marked.options}) {
    for (const std::string& caption : *captions) ++owners[letterIn(caption)];
  }
  for (const auto* captions : {&marked.buttons, &marked.ownButtons}) {
    for (const std::string& caption : *captions) EXPECT_EQ(owners[letterIn(caption)], 1) << caption;
  }
  std::size_t position = 0;
  for (const auto& option : options) {
    const std::string& caption = marked.options[position++];
    if (option.kind == OptionKind::spacer || option.kind == OptionKind::staticLabel) continue;
    EXPECT_NE(letterIn(caption), '\0') << option.Caption;
  }
}

}  // namespace
}  // namespace mervane::platform
