// A shared object with nothing in it: the least that loading one takes.
