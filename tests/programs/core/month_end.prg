// Month-end run of a small wholesale shop: a catalogue, discounts, tax,
// stock with reorders, thirty days of orders drawn from a fixed sequence,
// and a few checks on the invoice numbers. Every figure is printed, so the
// run can be compared line by line.
//
// Operators bind by their number, comparisons tighter than arithmetic, so
// arithmetic inside a comparison always stands in brackets here.

// ------------------------------------------------------------------ helpers

// The integer part of a non-negative number.
FUNCTION whole(x)
    RETURN x % 1000000000000;
ENDFUNCTION;

// A non-negative number rounded to the nearest whole.
FUNCTION rounded(x)
    RETURN whole(x + 0.5);
ENDFUNCTION;

FUNCTION maxOf(a, b)
    IF a > b THEN
        RETURN a;
    ENDIF;
    RETURN b;
ENDFUNCTION;

FUNCTION minOf(a, b)
    IF a < b THEN
        RETURN a;
    ENDIF;
    RETURN b;
ENDFUNCTION;

FUNCTION power(base, exponent)
    VAR result = 1;
    FOR step = 1 TO exponent DO
        result = result * base;
    ENDDO;
    RETURN result;
ENDFUNCTION;

// The integer square root, by Newton's method.
FUNCTION isqrt(n)
    IF n < 2 THEN
        RETURN n;
    ENDIF;
    VAR guess = n;
    VAR better = whole((guess + 1) / 2);
    WHILE better < guess DO
        guess = better;
        better = whole((guess + whole(n / guess)) / 2);
    ENDDO;
    RETURN guess;
ENDFUNCTION;

// A line of `count` copies of `mark`.
FUNCTION bar(mark, count)
    VAR line = "";
    VAR i = 0;
    WHILE i < count DO
        line = line + mark;
        i = i + 1;
    ENDDO;
    RETURN line;
ENDFUNCTION;

// The next number of a fixed pseudo-random sequence, kept by the caller.
FUNCTION nextDraw(seed)
    seed = ((seed * 75) + 74) % 65537;
    RETURN seed;
ENDFUNCTION;

// ------------------------------------------------------------ number checks

FUNCTION isPrime(n)
    IF n < 2 THEN
        RETURN FALSE;
    ENDIF;
    VAR limit = isqrt(n);
    FOR d = 2 TO limit DO
        IF (n % d) = 0 THEN
            RETURN FALSE;
        ENDIF;
    ENDDO;
    RETURN TRUE;
ENDFUNCTION;

FUNCTION countPrimes(limit)
    VAR found = 0;
    FOR candidate = 2 TO limit DO
        IF isPrime(candidate) THEN
            found = found + 1;
        ENDIF;
    ENDDO;
    RETURN found;
ENDFUNCTION;

FUNCTION digitSum(VAR n)
    VAR sum = 0;
    WHILE n > 0 DO
        sum = sum + (n % 10);
        n = whole(n / 10);
    ENDDO;
    RETURN sum;
ENDFUNCTION;

FUNCTION reversed(VAR n)
    VAR back = 0;
    WHILE n > 0 DO
        back = (back * 10) + (n % 10);
        n = whole(n / 10);
    ENDDO;
    RETURN back;
ENDFUNCTION;

FUNCTION isPalindrome(n)
    RETURN reversed(n) = n;
ENDFUNCTION;

FUNCTION collatzLength(VAR n)
    VAR length = 1;
    WHILE n <> 1 DO
        IF (n % 2) = 0 THEN
            n = n / 2;
        ELSE
            n = (3 * n) + 1;
        ENDIF;
        length = length + 1;
    ENDDO;
    RETURN length;
ENDFUNCTION;

// -------------------------------------------------------------- catalogue

// Prices in cents by product code 1 to 6.
FUNCTION price(code)
    IF code = 1 THEN
        RETURN 1250;
    ELSEIF code = 2 THEN
        RETURN 899;
    ELSEIF code = 3 THEN
        RETURN 15000;
    ELSEIF code = 4 THEN
        RETURN 320;
    ELSEIF code = 5 THEN
        RETURN 4599;
    ENDIF;
    RETURN 7777;
ENDFUNCTION;

ФУНКЦИЯ название(код)
    ЕСЛИ код = 1 ТОГДА ВОЗВРАТ "гвозди"; КОНЕЦЕСЛИ;
    ЕСЛИ код = 2 ТОГДА ВОЗВРАТ "шурупы"; КОНЕЦЕСЛИ;
    ЕСЛИ код = 3 ТОГДА ВОЗВРАТ "дрель"; КОНЕЦЕСЛИ;
    ЕСЛИ код = 4 ТОГДА ВОЗВРАТ "скотч"; КОНЕЦЕСЛИ;
    ЕСЛИ код = 5 ТОГДА ВОЗВРАТ "краска"; КОНЕЦЕСЛИ;
    ВОЗВРАТ "пила";
КОНЕЦФУНКЦИИ;

// Percent off by quantity; regular customers get two points more. The
// customer's class is a variable of whoever places the order.
FUNCTION discountPercent(quantity)
    VAR percent = 0;
    IF quantity >= 50 THEN
        percent = 15;
    ELSEIF quantity >= 20 THEN
        percent = 10;
    ELSEIF quantity >= 10 THEN
        percent = 5;
    ENDIF;
    IF customerClass = "regular" THEN
        percent = percent + 2;
    ENDIF;
    RETURN percent;
ENDFUNCTION;

// The cents of one order line with the discount and 20% tax.
FUNCTION lineCents(code, quantity)
    VAR gross = price(code) * quantity;
    VAR net = gross - rounded((gross * discountPercent(quantity)) / 100);
    RETURN net + rounded(net * 0.2);
ENDFUNCTION;

// ------------------------------------------------------------------ stock

stock1 = 400; stock2 = 300; stock3 = 20; stock4 = 500; stock5 = 60; stock6 = 15;
sold1 = 0; sold2 = 0; sold3 = 0; sold4 = 0; sold5 = 0; sold6 = 0;
reorders = 0;

// Takes what the stock has; a stock that falls below 10 is refilled by 100.
FUNCTION take(stock, wanted)
    VAR given = minOf(stock, wanted);
    stock = stock - given;
    IF stock < 10 THEN
        stock = stock + 100;
        reorders = reorders + 1;
    ENDIF;
    RETURN given;
ENDFUNCTION;

PROCEDURE addTo(total, amount)
    total = total + amount;
ENDPROCEDURE;

// One order: the product and quantity come from the sequence.
FUNCTION placeOrder(code, quantity)
    VAR given = 0;
    IF code = 1 THEN given = take(stock1, quantity); addTo(sold1, given); ENDIF;
    IF code = 2 THEN given = take(stock2, quantity); addTo(sold2, given); ENDIF;
    IF code = 3 THEN given = take(stock3, quantity); addTo(sold3, given); ENDIF;
    IF code = 4 THEN given = take(stock4, quantity); addTo(sold4, given); ENDIF;
    IF code = 5 THEN given = take(stock5, quantity); addTo(sold5, given); ENDIF;
    IF code = 6 THEN given = take(stock6, quantity); addTo(sold6, given); ENDIF;
    RETURN lineCents(code, given);
ENDFUNCTION;

// ------------------------------------------------------------- the month

seed = 2024;
revenue = 0;
orders = 0;
bestDay = 0;
bestDayCents = 0;
FOR day = 1 TO 30 DO
    dayCents = 0;
    IF (day % 7) = 0 THEN
        customerClass = "regular";
    ELSE
        customerClass = "walk-in";
    ENDIF;
    count = (nextDraw(seed) % 4) + 1;
    FOR o = 1 TO count DO
        code = (nextDraw(seed) % 6) + 1;
        quantity = (nextDraw(seed) % 60) + 1;
        addTo(dayCents, placeOrder(code, quantity));
        orders = orders + 1;
    ENDDO;
    IF dayCents > bestDayCents THEN
        bestDay = day;
        bestDayCents = dayCents;
    ENDIF;
    revenue = revenue + dayCents;
ENDDO;

? "orders";
? orders;
? "revenue, cents";
? revenue;
? "best day";
? bestDay;
? bestDayCents;
? "reorders";
? reorders;

? "sold and left";
? название(1); ? sold1; ? stock1;
? название(2); ? sold2; ? stock2;
? название(3); ? sold3; ? stock3;
? название(4); ? sold4; ? stock4;
? название(5); ? sold5; ? stock5;
? название(6); ? sold6; ? stock6;

// a bar of one mark per 50 units sold
? bar("*", whole(sold1 / 50));
? bar("*", whole(sold2 / 50));
? bar("*", whole(sold4 / 50));

best = 1;
bestSold = sold1;
IF sold2 > bestSold THEN best = 2; bestSold = sold2; ENDIF;
IF sold3 > bestSold THEN best = 3; bestSold = sold3; ENDIF;
IF sold4 > bestSold THEN best = 4; bestSold = sold4; ENDIF;
IF sold5 > bestSold THEN best = 5; bestSold = sold5; ENDIF;
IF sold6 > bestSold THEN best = 6; bestSold = sold6; ENDIF;
? "best seller";
? название(best);

// ------------------------------------------------------ invoice numbers

? "primes below 1000";
? countPrimes(1000);
invoice = 100000 + orders;
? invoice;
? digitSum(invoice);
? reversed(invoice);
? invoice;
? isPalindrome(12321);
? isPalindrome(invoice);
? isqrt(invoice);
? power(2, 20);
? maxOf(collatzLength(27), collatzLength(97));

longest = 0;
longestStart = 0;
FOR start = 1 TO 300 DO
    length = collatzLength(start);
    IF length > longest THEN
        longest = length;
        longestStart = start;
    ENDIF;
ENDDO;
? longestStart;
? longest;
