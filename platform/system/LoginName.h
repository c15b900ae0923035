// Who uses the program.
#pragma once

#include <QString>

// The name that the user has logged in with; empty where the system does not tell.
QString LoginName();
