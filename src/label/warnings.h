#pragma once

#include <vector>

#include "label/composition.h"
#include "label/error.h"
#include "label/request.h"
#include "label/types.h"

namespace barcode::label {

// What may keep a label from being read although it is drawn as asked: the symbology, quiet zone, module and
// colours. In the order of their codes in this list: kNoReader, kQuietZone, kSmallModule, kLowContrast,
// kLightOnDark.
std::vector<Warning> PrintWarnings(const TypeInfo& type, const Request& request,
                                   const Composition& composition);

// These and those of the composition. Where there are any, throws LabelError for the first one if the request
// is strict.
std::vector<Warning> WarningsOf(const TypeInfo& type, const Request& request, const Composition& composition);

}  // namespace barcode::label
