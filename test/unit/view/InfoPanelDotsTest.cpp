// Texts of the right-hand column for which there is not enough room, so that LVGL shows dots for
// their end.

#include "test/unit/stage/PanelStage.h"
#include "view/InfoPanel.h"

namespace {

using Setter = void (*)(const CHAR8 *);

class InfoPanelDots : public ViewStage {
 protected:
  void BuildWith(Setter set) {
    // Large letters, so that a heading, too, finds no room for all of its lines.
    Host.Config.Heading.Font.Size = 60;
    Host.ClearComponents();
    Build(1024, 768);
    set_ = set;
    SetInfoText("\n");
  }
  /// Sets a text; whether anything was drawn for it.
  bool Draws(const std::string &text) {
    lv_refr_now(nullptr);
    size_t before = Transfers();
    set_(text.c_str());
    lv_refr_now(nullptr);
    return Transfers() != before;
  }
  size_t Transfers() { return Machine.Calls.CountOf(fake::Service::GopBlt); }

  /// As many short lines as have room, and one more with this text, so that dots are shown.
  std::string TooLong(lv_obj_t **label, const std::string &last) {
    for (std::string text = last; text.size() < 400; text.insert(0, "x\n")) {
      set_(text.c_str());
      lv_obj_update_layout(*label);
      if (LabelText(*label).ends_with("...")) {
        return text;
      }
    }
    ADD_FAILURE() << "there was room for all lines";
    return "";
  }

  /// Texts that are like this one but for one byte, or for their end; dots are shown from `dots`.
  static std::vector<std::string> OthersLike(const std::string &text, size_t dots) {
    std::vector<std::string> others = {text.substr(0, dots) + "..."};
    for (size_t i = dots < 2 ? 0 : dots - 2; i < text.size(); i++) {
      others.push_back(text.substr(0, i));
      others.push_back(text);
      others.back()[i] = text[i] == 'y' ? 'z' : 'y';
    }
    others.push_back(text + "y");
    return others;
  }

  /// The text is drawn once, and again only after another one.
  void ExpectDrawnOnlyAnew(lv_obj_t **label, const std::string &text) {
    set_(text.c_str());
    std::string shown = LabelText(*label);
    ASSERT_TRUE(shown.ends_with("...")) << shown;
    for (const std::string &other : OthersLike(text, shown.size() - 3)) {
      EXPECT_FALSE(Draws(text)) << text;
      EXPECT_TRUE(Draws(other)) << other;
      EXPECT_EQ(WholeText(*label), other);
      EXPECT_FALSE(Draws(other)) << other;
      EXPECT_TRUE(Draws(text)) << text;
      EXPECT_EQ(WholeText(*label), text);
    }
  }

  Setter set_ = nullptr;
};

TEST_F(InfoPanelDots, AHeadingIsDrawnOnlyWhenItChanges) {
  BuildWith(SetPanelHeading);
  ExpectDrawnOnlyAnew(&gView.Heading, TooLong(&gView.Heading, "abcdef"));
}

TEST_F(InfoPanelDots, AnInfoTextIsDrawnOnlyWhenItChanges) {
  BuildWith(SetInfoText);
  ExpectDrawnOnlyAnew(&gView.InfoText, TooLong(&gView.InfoText, "abcdef\nghi"));
}

TEST_F(InfoPanelDots, ASideListIsDrawnOnlyWhenItChanges) {
  BuildWith(SetSideList);
  ExpectDrawnOnlyAnew(&gView.SideList, TooLong(&gView.SideList, "abcdef\nghi"));
}

TEST_F(InfoPanelDots, ATextThatEndsUnderItsDotsIsDrawnOnlyWhenItChanges) {
  BuildWith(SetInfoText);
  std::string text = TooLong(&gView.InfoText, "ab");
  EXPECT_EQ(LabelText(gView.InfoText).size(), text.size());
  ExpectDrawnOnlyAnew(&gView.InfoText, text);
}

TEST_F(InfoPanelDots, ATextOfLongCharactersIsDrawnOnlyWhenItChanges) {
  BuildWith(SetInfoText);
  // Each starts with a character of another length, which the first dot covers. The last is what
  // the firmware's print library makes of such characters: no UTF-8.
  for (const char *last : {"\u00E4\u00F6\u00FC\u00DF", "\u20AC\u4E2D\u20AC\u4E2D",
                           "\U00010330\U00010331\U00010332", "\xE4\xF6\xFC\xDF\xE4"}) {
    std::string text = TooLong(&gView.InfoText, last);
    EXPECT_FALSE(Draws(text)) << text;
    std::string cut = text;
    cut.pop_back();
    EXPECT_TRUE(Draws(cut)) << cut;
    EXPECT_TRUE(Draws(text)) << text;
    EXPECT_FALSE(Draws(text)) << text;
  }
}

TEST_F(InfoPanelDots, ATextTooLongToBeKeptIsStillSet) {
  BuildWith(SetInfoText);
  std::string kept(kPanelTextSize - 1, 'x');
  EXPECT_TRUE(Draws(kept));
  EXPECT_FALSE(Draws(kept));
  for (const std::string &text : {kept + "x", kept + "y", kept + kept}) {
    EXPECT_TRUE(Draws(text));
    EXPECT_EQ(WholeText(gView.InfoText), text);
  }
  EXPECT_TRUE(Draws(kept));
  EXPECT_EQ(WholeText(gView.InfoText), kept);
}

TEST_F(InfoPanelDots, AnEmptyFirstTextIsSet) {
  BuildWith(SetSideList);
  set_("");
  EXPECT_EQ(WholeText(gView.SideList), "");
}

}  // namespace
