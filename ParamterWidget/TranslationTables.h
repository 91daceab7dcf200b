// SPDX-License-Identifier: MIT
#pragma once

#include "PanelBase/TranslationTables.h" // the tables lie below both kits, which look them up too
