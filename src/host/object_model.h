// The whole CAD object model in one include, for code that walks several
// levels of it (documents, layouts, blocks, entities, selection sets).
#ifndef LMT_HOST_OBJECT_MODEL_H_
#define LMT_HOST_OBJECT_MODEL_H_

#include "host/application.h"
#include "host/block.h"
#include "host/call_gate.h"
#include "host/document.h"
#include "host/entity.h"
#include "host/layout.h"
#include "host/object.h"
#include "host/point.h"
#include "host/selection_filter.h"
#include "host/selection_set.h"
#include "host/symbol_tables.h"
#include "host/variant.h"

#endif  // LMT_HOST_OBJECT_MODEL_H_
