// Lets the user interface process what is pending, from inside a long loop.
#pragma once

// Does nothing where no application object exists.
void DoEvents();
