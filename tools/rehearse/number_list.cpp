#include "tools/rehearse/number_list.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "render/screen.h"
#include "tools/formatted.h"
#include "tools/rehearse/canvas.h"

namespace {

constexpr float width = 328, rowHeight = 15;
constexpr float x0 = screenWidth - 4 - width;
constexpr float top = screenHeight - 62;
constexpr float headHeight = 40;  // what is said of the chosen one
constexpr float rowsTop = top - headHeight - 4;
constexpr float right = x0 + width - 10;
constexpr float column = 45;  // of a number
constexpr size_t columns = 4;

// A file's name, or a constant's with some of its numbers.
struct Row {
    std::string name;
    std::vector<int> numbers;
};

// Its name without the last step, if that counts: elements of a table stand side by side.
std::string rowName(const TurnableNumber& number) {
    const std::string name = number.name();
    const size_t step = name.find_last_of(" .");
    const bool counts = !number.label.empty() && std::isdigit(static_cast<unsigned char>(name[step + 1]));
    return counts ? name.substr(0, step) : name;
}

std::vector<Row> rowsOf(const Numbers& numbers) {
    std::vector<Row> rows;
    std::string file;
    for (const int i : numbers.listed) {
        const TurnableNumber& number = numbers.all[size_t(i)];
        if (number.file != file) rows.push_back({file = number.file, {}});
        Row& row = rows.back();
        if (row.name == rowName(number) && row.numbers.size() < columns)
            row.numbers.push_back(i);
        else
            rows.push_back({rowName(number), {i}});
    }
    return rows;
}

float baseOf(int shownRow) {
    return rowsTop - rowHeight * float(shownRow + 1) + 4;
}

float columnOf(size_t number, size_t count) {
    return right - column * float(count - 1 - number);
}

void drawRow(const Numbers& numbers, const Row& row, float base) {
    if (row.numbers.empty()) {
        write(x0 + 10, base, helvetica10, quiet, row.name);
        return;
    }
    write(x0 + 18, base, helvetica12, plain, row.name);
    for (size_t i = 0; i < row.numbers.size(); i++) {
        const TurnableNumber& number = numbers.all[size_t(row.numbers[i])];
        const std::string& text = numbers.compared ? number.source : number.now;
        const float x = columnOf(i, row.numbers.size());
        if (row.numbers[i] == numbers.chosen) {
            const float across = std::max(textWidth(helvetica12, text) + 8, column - 4);
            fillBox(x + 4 - across, base - 4, across, rowHeight, bright.faded(0.22f));
        }
        writeRight(x, base, helvetica12, number.turned() ? marked : bright, text);
    }
}

void drawHead(const Numbers& numbers) {
    fillBox(x0 + 8, rowsTop + 2, width - 16, 1, bright.faded(0.2f));
    if (numbers.compared)
        write(x0 + 10, top - 16, helvetica12, marked, "as the sources have it; c: as it is turned");
    else
        write(x0 + 10, top - 16, helvetica10, quiet,
              "wheel or drag: turn   Enter: into its source   c: compare");
    if (numbers.chosen < 0) return;
    const TurnableNumber& number = numbers.all[size_t(numbers.chosen)];
    std::string text =
        "line " + std::to_string(number.line) + (number.remark.empty() ? "" : ": ") + number.remark;
    if (number.turned()) text = "was " + number.source + "   " + text;
    while (textWidth(helvetica10, text) > width - 20) text.pop_back();
    write(x0 + 10, top - 33, helvetica10, plain, text);
}

}  // namespace

int NumberList::shownRows() const {
    return int((rowsTop - bottom - 4) / rowHeight);
}

float NumberList::left() const {
    return open ? x0 : screenWidth;
}

bool NumberList::isOn(int x, int y) const {
    const float up = float(screenHeight - 1 - y);
    return open && float(x) >= x0 && float(x) < x0 + width && up >= bottom && up < top;
}

int NumberList::numberAt(const Numbers& numbers, int x, int y) const {
    if (!isOn(x, y)) return -1;
    const int shown = int(std::floor((rowsTop - float(screenHeight - 1 - y)) / rowHeight));
    const std::vector<Row> rows = rowsOf(numbers);
    const size_t row = size_t(shown + scrolled);
    if (shown < 0 || shown >= shownRows() || row >= rows.size()) return -1;
    const std::vector<int>& there = rows[row].numbers;
    // One alone is pointed at by its name as well.
    if (there.size() == 1) return there[0];
    for (size_t i = 0; i < there.size(); i++)
        if (float(x) < columnOf(i, there.size()) + 4 && float(x) >= columnOf(i, there.size()) + 4 - column)
            return there[i];
    return -1;
}

void NumberList::scroll(const Numbers& numbers, int rows) {
    scrolled = std::clamp(scrolled + rows, 0, std::max(0, int(rowsOf(numbers).size()) - shownRows()));
}

void NumberList::reveal(const Numbers& numbers) {
    const std::vector<Row> rows = rowsOf(numbers);
    for (int i = 0; i < int(rows.size()); i++) {
        const std::vector<int>& there = rows[size_t(i)].numbers;
        if (std::find(there.begin(), there.end(), numbers.chosen) == there.end()) continue;
        scrolled = std::clamp(scrolled, i - shownRows() + 1, std::max(i - 1, 0));
    }
    scroll(numbers, 0);
}

void drawNumbers(const Numbers& numbers, const NumberList& list) {
    if (!list.open) return;
    beginCanvas();
    drawPane(x0, list.bottom, width, top - list.bottom);
    const std::vector<Row> rows = rowsOf(numbers);
    if (rows.empty())
        write(x0 + 10, baseOf(0), helvetica12, quiet,
              "the show's code is being built: its numbers come then");
    for (int i = 0; i < list.shownRows() && i + list.scrolled < int(rows.size()); i++)
        drawRow(numbers, rows[size_t(i + list.scrolled)], baseOf(i));
    if (int(rows.size()) > list.shownRows()) {
        const float all = rowsTop - list.bottom - 4, share = float(list.shownRows()) / float(rows.size());
        const float from = float(list.scrolled) / float(rows.size());
        fillBox(x0 + width - 5, rowsTop - all * (from + share), 3, all * share, bright.faded(0.35f));
    }
    drawHead(numbers);
    endCanvas();
}
