// A product: a file of data/, or an icon, with the function that makes it. Each kind has a table of them in a
// header; a new file is a new row there. The build reads the rows as well, so each fits its line. The tables
// are inline: who only counts the rows is not linked with what makes them.
#pragma once

struct Product {
    const char* file;                // path below the folder, such as "ship.AML"
    void (*make)(const char* path);  // writes the whole file; ends the process with a line if it can't
};
