#include "support/Dialog.h"

void fillDialog(ExtendDialog* dialog, QWidget* content)
{
    content->resize(content->sizeHint().expandedTo(content->minimumSize()));
    dialog->AddMainWidget(content);
    content->show();
    dialog->changeSize(content->size());
}
