// An assignment without a value.
total = 1;
    total = ;
? total;
