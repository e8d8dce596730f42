// measure [GROUP[:PART]]...: measures and prints a table. Without a group: all of them. The status is 1 if a
// goal was missed, or something could not be measured.
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/bench.h"

namespace {

const struct Group {
    const char* name;
    Figures (*run)(const std::string& filter);
} groups[] = {
    {"loaders", benchLoaders},       {"beams", benchBeams},     {"frames", benchFrames},
    {"undrawn", benchUndrawnFrames}, {"capture", benchCapture}, {"reload", benchReload},
    {"flashes", benchFlashes},
};

// How far a figure is from its goal, in percent: above 0 if it misses it.
double excess(const Figure& figure) {
    if (figure.kind == Goal::none) return 0;
    const bool isRatio = figure.kind == Goal::ratioAtMost || figure.kind == Goal::ratioAtLeast;
    const double reached = isRatio ? ratio(figure) : figure.value;
    return (reached / figure.goal - 1) * (figure.kind == Goal::ratioAtLeast ? -100 : 100);
}

void printRow(const Figure& figure) {
    printf("%-35s %9.2f %-10s", figure.name.c_str(), figure.value, figure.unit);
    if (figure.compared > 0) printf(" %9.2f   ratio %6.3f", figure.compared, ratio(figure));
    if (!figure.ratios.empty()) {
        const auto [least, most] = std::minmax_element(figure.ratios.begin(), figure.ratios.end());
        printf(", %zu pairs %.3f to %.3f", figure.ratios.size(), *least, *most);
    }
    if (figure.kind != Goal::none)
        printf("   goal %g: %s", figure.goal, excess(figure) > 0 ? "missed by " : "reached");
    if (excess(figure) > 0) printf("%.1f %%", excess(figure));
    printf("\n");
    fflush(stdout);
}

int runGroup(const Group& group, const std::string& filter) {
    const Figures figures = group.run(filter);
    bool missed = figures.empty();
    for (const Figure& figure : figures) {
        printRow(figure);
        missed |= excess(figure) > 0;
    }
    return missed;
}

// "GROUP" or "GROUP:PART", of which PART. False if the word is of another group.
bool chooses(const std::string& word, const std::string& group, std::string* filter) {
    if (word == group) return filter->clear(), true;
    if (!word.starts_with(group + ":")) return false;
    *filter = word.substr(group.size() + 1);
    return true;
}

// True if it could be measured and missed no goal.
bool runProcess(const char* program, const Group& group, const std::string& filter) {
    const int status = system((std::string(program) + " group " + group.name + " '" + filter + "'").c_str());
    if (!WIFEXITED(status)) fprintf(stderr, "bench: %s failed\n", group.name);
    return status == 0;
}

int runAll(const char* program, const std::vector<std::string>& words) {
    bool reached = true;
    std::string filter;
    for (const std::string& word : words) {
        if (std::ranges::any_of(groups,
                                [&](const Group& group) { return chooses(word, group.name, &filter); }))
            continue;
        fprintf(stderr, "bench: %s: no group of rows\n", word.c_str());
        return 1;
    }
    for (const Group& group : groups) {
        if (words.empty()) reached &= runProcess(program, group, "");
        for (const std::string& word : words)
            if (chooses(word, group.name, &filter)) reached &= runProcess(program, group, filter);
    }
    return !reached;
}

}  // namespace

// Besides the groups, what they run as processes of their own.
int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const std::string task = words.empty() ? "" : words[0];
    if (task == "moment" && words.size() == 4)
        return printMoment(std::stoi(words[1]), std::stoi(words[2]), std::stoi(words[3])), 0;
    if (task == "leaves-drawing-out") return printWhetherDrawingIsLeftOut(), 0;
    if (task == "capture-pairs" && words.size() == 2) return printCapturePairs(std::stoi(words[1])), 0;
    for (const Group& group : groups) {
        if (task == "group" && words.size() == 3 && words[1] == group.name) return runGroup(group, words[2]);
    }
    return runAll(argv[0], words);
}
