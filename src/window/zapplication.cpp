#include "zapplication.h"

ZApplication::ZApplication(int &argc, char **argv)
    : QApplication(argc, argv)
{
}

ZApplication::~ZApplication() = default;
