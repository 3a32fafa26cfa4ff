#include "Program.h"

int main(int argumentCount, char** arguments)
{
    // A program may be started without even its own name.
    return tessarine::batch::RunProgram({arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount});
}
