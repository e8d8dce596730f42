// A product: a file of data/, or an icon, with the function that makes it. Each kind has a table of them in a
// header, whose rows the build reads as well. The tables are inline: who only counts the rows is not linked
// with what makes them.
#pragma once

struct Product {
    const char* file;                // path below the folder, such as "ship.AML"
    void (*make)(const char* path);  // writes the whole file; ends the process with a line if it can't
};
