// The same files through nothing but the libraries: what a loader is measured against.
#pragma once

void barePng(const char* path);
void bareJpeg(const char* path);
// Just the bytes.
void bareFile(const char* path);
// All of a Vorbis file as floats; returns how many frames.
long bareVorbis(const char* path);
