// measure [GROUP]...: measures, prints a table and writes bench.json. Without a group: all of them.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "bench/bench.h"
#include "bench/moments.h"

namespace {

constexpr char partialResults[] = "bench.json.part";

const struct Group {
    const char* name;
    Figures (*run)();
} groups[] = {
    {"loaders", benchLoaders}, {"rays", benchRays},       {"startup", benchStartUp},
    {"frames", benchFrames},   {"capture", benchCapture},
};

void printRow(const Figure& figure) {
    printf("%-30s %9.2f %-10s", figure.name.c_str(), figure.value, figure.unit);
    if (figure.compared > 0) {
        const double ratio = figure.value / figure.compared;
        const bool reached = figure.atLeast ? ratio >= figure.goal : ratio <= figure.goal;
        printf(" %9.2f   ratio %6.3f", figure.compared, ratio);
        if (figure.goal > 0) {
            printf("   goal %s %.2f: %s", figure.atLeast ? "at least" : "at most", figure.goal,
                   reached ? "reached" : "missed");
        }
    }
    printf("\n");
}

void writeRow(FILE* file, const char* group, const Figure& figure, bool first) {
    fprintf(file,
            "%s\n  {\"group\": \"%s\", \"name\": \"%s\", \"value\": %g, \"unit\": \"%s\", \"compared\": %g, "
            "\"goal\": %g}",
            first ? "" : ",", group, figure.name.c_str(), figure.value, figure.unit, figure.compared,
            figure.goal);
}

// The rows go behind those of the groups before.
int runGroup(const Group& group) {
    FILE* file = fopen(partialResults, "a");
    if (!file) return 1;
    bool first = ftell(file) == 0;
    for (const Figure& figure : group.run()) {
        printRow(figure);
        writeRow(file, group.name, figure, first);
        first = false;
    }
    fclose(file);
    return 0;
}

bool isWanted(const char* group, int argc, char** argv) {
    for (int i = 1; i < argc; i++) {
        if (strcmp(argv[i], group) == 0) return true;
    }
    return argc == 1;
}

int runAll(int argc, char** argv) {
    remove(partialResults);
    int failures = 0;
    for (const Group& group : groups) {
        if (!isWanted(group.name, argc, argv)) continue;
        if (system((std::string(argv[0]) + " group " + group.name).c_str()) != 0) {
            fprintf(stderr, "bench: %s failed\n", group.name);
            failures++;
        }
    }
    const std::string part = partialResults;
    failures +=
        system(("{ printf '['; cat " + part + "; printf '\\n]\\n'; } >bench.json; rm " + part).c_str());
    return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && strcmp(argv[1], "moment") == 0) {
        const Moment moment = drawMoment(atoi(argv[2]), atoi(argv[3]));
        printf("%f %f\n", moment.wall, moment.process);
        return 0;
    }
    if (argc == 3 && strcmp(argv[1], "group") == 0) {
        for (const Group& group : groups) {
            if (strcmp(argv[2], group.name) == 0) return runGroup(group);
        }
    }
    return runAll(argc, argv);
}
