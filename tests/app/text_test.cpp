// The message list, and bitmap text by the pixels it sets.
#include "app/text.h"

#include <utility>

#include "app/messages.h"
#include "tests/gl_window.h"

namespace {

TEST(Messages, KeepTheNewestNineteenCutToTheirBuffers) {
    MessageList messages;
    for (int i = 1; i <= 24; i++) messages.post("tap %d", i);
    messages.post("%s", std::string(500, 'x').c_str());
    ASSERT_EQ(messages.lines.size(), 19u);
    EXPECT_STREQ(messages.lines.front().get(), "tap 7");
    EXPECT_EQ(messages.lines.back().get(), std::string(79, 'x'));
}

class Text : public GlWindow {
public:
    struct Box {
        int left = screenWidth, bottom = screenHeight, right = -1, top = -1;
    };

    // Around all lit pixels; right and top are the last ones inside.
    static Box litBox() {
        const Screen screen = readScreen();
        Box box;
        for (int y = 0; y < screenHeight; y++) {
            for (int x = 0; x < screenWidth; x++) {
                if (!screen.at(x, y).g) continue;
                box = {std::min(box.left, x), std::min(box.bottom, y), std::max(box.right, x),
                       std::max(box.top, y)};
            }
        }
        return box;
    }

    static Box draw(int font, const char* text, float x = 100, float y = 200) {
        glClear(GL_COLOR_BUFFER_BIT);
        begin2DText(screenWidth, screenHeight);
        drawText(x, y, font, text);
        end2DText();
        return litBox();
    }
};

TEST_F(Text, StandsOnItsBaseLineAtItsPlaceInItsFont) {
    const Box h = draw(fixed9x15, "H");
    EXPECT_EQ(h.bottom, 200);
    EXPECT_GE(h.left, 100);
    EXPECT_LT(h.right, 109);
    EXPECT_EQ(draw(fixed9x15, " H").left, h.left + 9);
    EXPECT_EQ(draw(fixed8x13, "     H").left - draw(fixed8x13, "H").left, 5 * 8);
    int previousTop = 0;
    for (const int font : {helvetica10, helvetica12, helvetica18, timesRoman24})
        EXPECT_GT(draw(font, "H").top, std::exchange(previousTop, draw(font, "H").top)) << font;
}

TEST_F(Text, CharactersAndFontsThatThereAreNotAreLeftOut) {
    EXPECT_EQ(draw(fixed9x15, "\xe4\xff\x80H").left, draw(fixed9x15, "H").left);
    for (const int none : {-1, 7, 1000}) EXPECT_EQ(draw(none, "Hello").right, -1) << none;
}

TEST_F(Text, LineIsOneLineAboveTheBottomOfItsCell) {
    demo->setViewportAspect(2, 1);
    drawTextLine("H", 0, 0);
    const Box box = litBox();
    EXPECT_EQ(box.bottom, 15);
    EXPECT_LT(box.right, 9);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[1], 100) << "the viewport of the aspect is back";
}

TEST_F(Text, LeavesTheStateItFound) {
    glColor3f(0, 1, 0);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_LIGHTING);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glTranslatef(3, 0, 0);
    const Box box = draw(fixed9x15, "H");
    EXPECT_GE(box.right, 100) << "drawn in spite of texture and lighting";
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT), 8);
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW);
    float view[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, view);
    EXPECT_EQ(view[12], 3);
}

}  // namespace
