#include "app/app.h"

App app;
