// The platform headers that the automation layer and everything above it need, in their one order.
#pragma once

#include <windows.h>

#include <ole2.h>

#include <oaidl.h>
#include <ocidl.h>
#include <olectl.h>
