// Stopping a capture: by a signal or its window's close button.
#pragma once

// From here on SIGINT, SIGTERM and SIGHUP ask for a stop, which ends a film that is only waited for at once;
// but not those that whoever started the capture had it ignore, as nohup does.
void stopOnSignals();

// Looks at the window's events too.
bool wantsToStop();
bool wasStopped();
