// The open-file pool's one operation that knows query nodes.

#include "oxdm/base/exception.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/file_manager.h"

bool oxdmFileManager::AddQueryNodeFile(oxdmQueryNode* node) {
    try {
        FileForTable(node->FileSpec(), nullptr, (node->Style() & oxdmQueryNode::StyleCreateFile) != 0,
                     TransactionGroup());
    } catch (const oxdmException&) {
        return false;
    }
    return true;
}
