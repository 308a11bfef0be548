// The dispatch tables of the server's classes, one per object-model class
// (all entity kinds share one: a member of another kind answers
// DISP_E_MEMBERNOTFOUND). Internal to the server.
#ifndef LMT_AUTOMATION_TABLES_H_
#define LMT_AUTOMATION_TABLES_H_

#include "automation/server_object.h"

namespace lmt::automation {

extern const ClassTable kEntityTable;
extern const ClassTable kBlockTable;
extern const ClassTable kBlocksTable;
extern const ClassTable kLayoutTable;
extern const ClassTable kLayoutsTable;
extern const ClassTable kLayerTable;
extern const ClassTable kLayersTable;
extern const ClassTable kLinetypeTable;
extern const ClassTable kLinetypesTable;
extern const ClassTable kTextStyleTable;
extern const ClassTable kTextStylesTable;
extern const ClassTable kSelectionSetTable;
extern const ClassTable kSelectionSetsTable;
extern const ClassTable kViewportTable;
extern const ClassTable kUtilityTable;
extern const ClassTable kPlotTable;
extern const ClassTable kDocumentTable;  // documents and ObjectDBX documents
extern const ClassTable kDocumentsTable;
extern const ClassTable kPreferencesTable;
extern const ClassTable kApplicationTable;
// An object with no members (a class the server does not serve).
extern const ClassTable kEmptyTable;

// Members of the drawing that hand out collections the embedded host does
// not model as objects (registered_applications.cc, named_views.cc).
Status RegisteredApplications(Call& call);
Status Views(Call& call);

}  // namespace lmt::automation

#endif  // LMT_AUTOMATION_TABLES_H_
