#include "tools/command_line.h"

#include <getopt.h>
#include <strings.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "script/show_times.h"

void refuse(const std::string& word, const std::string& reason) {
    fprintf(stderr, "%s: %s: %s\n", program_invocation_short_name, word.c_str(), reason.c_str());
    exit(1);
}

double numberIn(const char* text) {
    char* end = nullptr;
    const double value = strtod(text, &end);
    return end == text || *end ? NAN : value;
}

double secondOfShow(const char* text) {
    const double value = numberIn(text);
    if (!(value >= 0 && value < showtime::end.seconds())) refuse(text, "no second of the show");
    return value;
}

bool endsIn(const std::string& name, const std::string& ending) {
    return name.size() > ending.size() &&
           strcasecmp(name.c_str() + name.size() - ending.size(), ending.c_str()) == 0;
}

void readCommandLine(int argc, const char* const* argv, const std::string& usage,
                     const std::vector<std::string>& names,
                     const std::function<void(const std::string& option, const char* value)>& read) {
    std::vector<std::string> bare;  // without dashes and what follows
    for (const std::string& name : names)
        bare.push_back(
            name.substr(name.find_first_not_of('-'), name.find('=') - name.find_first_not_of('-')));
    std::vector<option> rows;
    auto next = getopt_long;
    for (size_t i = 0; i < names.size(); i++) {
        rows.push_back({bare[i].c_str(), names[i].ends_with('='), nullptr, 0});
        if (!names[i].starts_with("--")) next = getopt_long_only;
    }
    rows.insert(rows.end(), {{"help", no_argument, nullptr, 0}, {}});
    optind = 0;
    for (;;) {
        const char* const word = argv[std::max(optind, 1)];
        int row = 0;
        const int found = next(argc, const_cast<char* const*>(argv), "-:", rows.data(), &row);
        if (found == -1) break;
        if (found == ':') refuse(word, "needs a value");
        if (found == '?') refuse(word, "unknown option; --help tells those there are");
        if (found == 1) {
            read("", word);
        } else if (row < int(names.size())) {
            read(names[row].substr(0, names[row].find('=')), optarg);
        } else {
            fputs(usage.c_str(), stdout);
            exit(0);
        }
    }
    for (; optind < argc; optind++) read("", argv[optind]);
}
