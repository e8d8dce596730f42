// measure [GROUP[:PART]]...: measures, prints a table and writes bench.json. Without a group: all of them.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench/bench.h"
#include "bench/instructions.h"
#include "bench/moments.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr char partialResults[] = "bench.json.part";

const struct Group {
    const char* name;
    Figures (*run)(const std::string& part);
} groups[] = {
    {"loaders", benchLoaders},       {"rays", benchRays},
    {"startup", benchStartUp},       {"frames", benchFrames},
    {"undrawn", benchUndrawnFrames}, {"instructions", benchInstructions},
    {"capture", benchCapture},       {"reload", benchReload},
    {"flashes", benchFlashes},
};

void printGoal(const Figure& figure) {
    const bool isRatio = figure.kind == Goal::ratioAtMost || figure.kind == Goal::ratioAtLeast;
    const bool atLeast = figure.kind == Goal::ratioAtLeast || figure.kind == Goal::valueAtLeast;
    const double reached = isRatio ? ratio(figure) : figure.value;
    const double excess = (reached / figure.goal - 1) * (atLeast ? -100 : 100);
    printf("   goal at %s %g: ", atLeast ? "least" : "most", figure.goal);
    if (excess <= 0) {
        printf("reached");
    } else {
        printf("missed by %.1f %%", excess);
    }
}

void printRow(const Figure& figure) {
    printf("%-35s %9.2f %-10s", figure.name.c_str(), figure.value, figure.unit);
    if (figure.compared > 0) printf(" %9.2f   ratio %6.3f", figure.compared, ratio(figure));
    if (!figure.ratios.empty()) {
        const auto [least, most] = std::minmax_element(figure.ratios.begin(), figure.ratios.end());
        printf(", %zu pairs %.3f to %.3f", figure.ratios.size(), *least, *most);
    }
    if (figure.kind != Goal::none) printGoal(figure);
    printf("\n");
    fflush(stdout);
}

void writeRow(FILE* file, const char* group, const Figure& figure, bool first) {
    fprintf(
        file,
        "%s\n  {\"group\": \"%s\", \"name\": \"%s\", \"value\": %.9g, \"unit\": \"%s\", \"compared\": %g, "
        "\"goal\": %g, \"ratios\": [",
        first ? "" : ",", group, figure.name.c_str(), figure.value, figure.unit, figure.compared,
        figure.goal);
    for (size_t i = 0; i < figure.ratios.size(); i++) fprintf(file, i ? ", %g" : "%g", figure.ratios[i]);
    fprintf(file, "]}");
}

// The rows go behind those of the groups before.
int runGroup(const Group& group, const std::string& part) {
    FILE* file = fopen(partialResults, "a");
    if (!file) return 1;
    bool first = ftell(file) == 0;
    for (const Figure& figure : group.run(part)) {
        printRow(figure);
        writeRow(file, group.name, figure, first);
        first = false;
    }
    fclose(file);
    return 0;
}

// "GROUP" or "GROUP:PART", of which PART. False if the word is of another group.
bool chooses(const std::string& word, const std::string& group, std::string* part) {
    if (word == group) return part->clear(), true;
    if (!word.starts_with(group + ":")) return false;
    *part = word.substr(group.size() + 1);
    return true;
}

int runProcess(const char* program, const Group& group, const std::string& part) {
    const std::string command = std::string(program) + " group " + group.name + " '" + part + "'";
    if (system(command.c_str()) == 0) return 0;
    fprintf(stderr, "bench: %s failed\n", group.name);
    return 1;
}

int runAll(const char* program, const std::vector<std::string>& words) {
    remove(partialResults);
    int failures = 0;
    std::string part;
    for (const Group& group : groups) {
        if (words.empty()) failures += runProcess(program, group, "");
        for (const std::string& word : words) {
            if (chooses(word, group.name, &part)) failures += runProcess(program, group, part);
        }
    }
    const std::string rows = partialResults;
    failures +=
        system(("{ printf '['; cat " + rows + "; printf '\\n]\\n'; } >bench.json; rm " + rows).c_str());
    return failures == 0 ? 0 : 1;
}

int printMoment(const Moment& moment) {
    const FrameCost cost = drawMoment(moment);
    printf("%f %f\n", cost.wall, cost.process);
    return 0;
}

int printWhetherDrawingIsLeftOut() {
    SteppedShow show(30);
    puts(drawingIsLeftOut() ? "yes" : "no");
    return 0;
}

}  // namespace

// Besides the groups, what they run as processes of their own.
int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const std::string task = words.empty() ? "" : words[0];
    if (task == "moment" && words.size() == 4)
        return printMoment({std::stoi(words[1]), std::stoi(words[2]), std::stoi(words[3])});
    if (task == "leaves-drawing-out") return printWhetherDrawingIsLeftOut();
    if (task == "capture-pairs" && words.size() == 2) return printCapturePairs(std::stoi(words[1])), 0;
    if (task == "counted" && words.size() == 2) return drawCounted(words[1]), 0;
    for (const Group& group : groups) {
        if (task == "group" && words.size() == 3 && words[1] == group.name) return runGroup(group, words[2]);
    }
    return runAll(argv[0], words);
}
