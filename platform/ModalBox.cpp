#include "platform/ModalBox.h"

ModalBoxState gModalBox;
