#include "APP/clsFilmApp.h"

int main(int argc, char** argv) { return RunMorentisFilm(argc, argv); }
