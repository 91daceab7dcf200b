// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCBase.h>
#include <GenApi/GenApi.h>
