// The generator's table: each file of data/, and each icon, with the function that makes it and the sources
// it is made from. A new file is a new row in the table of its kind.
#pragma once

#include <functional>
#include <vector>

struct Product {
    const char* file;  // path below the folder, such as "ship.AML"
    // Writes the whole file; ends the process with a line if it can't.
    std::function<void(const char* path)> make;
    const char* source;  // beginning of the paths below production/ that make it, such as "models/ship.cpp"
    const char* kit;     // the same for what it rests on, such as "kit/model/", or nullptr
};

extern const std::vector<Product> modelProducts;
extern const std::vector<Product> pictureProducts;
extern const std::vector<Product> musicProducts;
extern const std::vector<Product> shaderProducts;
extern const std::vector<Product> iconProducts;  // not part of the data set: for the desktop, in sizes
