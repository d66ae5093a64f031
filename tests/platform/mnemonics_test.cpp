#include "platform/mnemonics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

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

TEST(Mnemonics, ACaptionWhoseLettersAreAllTakenStaysAsItIs) {
  EXPECT_EQ(withMnemonics({"a", "A", "", "12"}, '~'), (Captions{"~a", "A", "", "12"}));
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
}

TEST(Mnemonics, NoLetterOfTheDialogIsGivenTwiceAndEveryFieldHeaderAndButtonHasOne) {
  Captions captions;
  std::size_t certain = 0;
  for (const auto& button : dialog::designedButtons()) captions.push_back(button.Caption);
  certain = captions.size();
  Captions fields;
  for (const auto& option : dialog::designedOptions()) {
    captions.push_back(option.Caption);
    const bool field = option.kind == OptionKind::groupHeader || option.kind == OptionKind::edit ||
                       option.kind == OptionKind::editWithBrowse || option.kind == OptionKind::dropDown;
    if (field) fields.push_back(option.Caption);
  }
  const Captions marked = withMnemonics(captions, '~');
  std::set<char> letters;
  std::size_t count = 0;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    const std::size_t at = marked[i].find('~');
    const bool needed = i < certain || std::find(fields.begin(), fields.end(), captions[i]) != fields.end();
    EXPECT_TRUE(!needed || at != std::string::npos) << captions[i];
    if (at == std::string::npos) continue;
    ++count;
    letters.insert(static_cast<char>(std::tolower(static_cast<unsigned char>(marked[i].at(at + 1)))));
  }
  EXPECT_EQ(letters.size(), count);
}

}  // namespace
}  // namespace mervane::platform
