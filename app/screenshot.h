// Screenshots: "w:/shots/shot0000.png" and on, anew with every run, into a directory that must exist.
#pragma once

// Writes the back buffer as it stands, counts the shot and clears the request. For a file that can't be
// written the image writer prints a line; its number is used up all the same.
void saveScreenshot();
