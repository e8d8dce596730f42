#include "tests/fuzz/clean_exit.h"

#include <cstdio>
// libjpeg's header needs FILE and size_t before it.
#include <jpeglib.h>

// libjpeg ends the process itself, by the error manager that it hands out. The linker puts this in front of
// its own (--wrap).
extern "C" jpeg_error_mgr* __real_jpeg_std_error(jpeg_error_mgr* errors);
extern "C" jpeg_error_mgr* __wrap_jpeg_std_error(jpeg_error_mgr* errors) {
    __real_jpeg_std_error(errors);
    errors->error_exit = [](j_common_ptr codec) {
        codec->err->output_message(codec);
        jpeg_destroy(codec);
        exit(EXIT_FAILURE);
    };
    return errors;
}
