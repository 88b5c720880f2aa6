// An assignment's value is copied into a new cell, as round brackets
// around its text would copy it, before the new variable takes its own:
// a takes the cell that the number 1 was read into.
a = 1;
MEMORYDISPLAYDATA();
