#pragma once

/// @file
/// Everything that a host needs, in one include.

#include "dotweave/basemaskdata.h"
#include "dotweave/cuttable.h"
#include "dotweave/export.h"
#include "dotweave/generatemaskdataparam.h"
#include "dotweave/maskblock.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "dotweave/maskparam.h"
#include "dotweave/maskparam_refusal.h"
#include "dotweave/rawmaskdata.h"
#include "dotweave/sinemask.h"
#include "dotweave/version.h"
