<?php
// What a program in PHP may do wrong with the class Label ends in an exception that says what is wrong.
//   hostile_test.php DIRECTORY_OF_LABEL_PHP

declare(strict_types=1);

require $argv[1] . '/Label.php';

$checks = 0;
$failures = 0;

function check(bool $isRight, string $what): void
{
    global $checks, $failures;
    ++$checks;
    if (!$isRight) {
        ++$failures;
        echo "FAILED: $what\n";
    }
}

// 'code of field: message', or the exception.
function outcome(callable $make): string
{
    try {
        return 'delivered ' . strlen($make()->data);
    } catch (LabelError $error) {
        return "{$error->getCode()} of {$error->field}: {$error->getMessage()}";
    } catch (Throwable $error) {
        return get_class($error) . ": {$error->getMessage()}";
    }
}

function expect(string $beginning, array|callable $request): void
{
    $outcome = outcome(is_callable($request) ? $request : fn () => Label::make($request));
    check(str_starts_with($outcome, $beginning), "$outcome, not $beginning");
}

// Values.
expect('delivered', ['type' => 'qr', 'text' => 'hello']);
expect('delivered', ['type' => 'qr', 'text' => 'hello', 'module' => null]);
expect('bad_value of type: ', ['type' => null, 'text' => 'hello']);
expect('bad_value of text: ', ['type' => 'qr', 'text' => null]);
expect('bad_value of type: ', []);
expect('unknown_field of 0: ', ['qr', 'hello']);
expect('TypeError: Label::make(): Argument #1', fn () => Label::make(null));
expect('TypeError: Label::makeFromJson(): Argument #1', fn () => Label::makeFromJson(null));
foreach ([[], ['a' => 1], new stdClass(), fopen('php://memory', 'r'), fn () => 1] as $wrong) {
    expect('TypeError: The field "text" is a ', ['type' => 'qr', 'text' => $wrong]);
    expect('TypeError: The field "module" is a ', ['type' => 'qr', 'text' => 'A', 'module' => $wrong]);
}
foreach (['4', true, 1.5, NAN, -INF, PHP_INT_MIN, 1e300] as $wrong) {
    expect(
        'bad_value of module: The field "module" must be a whole number from 1 to 100.',
        ['type' => 'qr', 'text' => 'A', 'module' => $wrong],
    );
}
expect('delivered', ['type' => 'code39', 'text' => 'A', 'text_scale' => 1.5]);
expect('delivered', ['type' => 'qr', 'text' => 'A', 'module' => 4.0]);
expect('delivered', ['type' => 'qr', 'text_base64' => base64_encode("\x00\xFF")]);
expect('bad_value of text: ', ['type' => 'qr', 'text' => 5]);
expect('unknown_field of modul: ', ['type' => 'qr', 'text' => 'A', 'modul' => 4]);
expect('unknown_type of type: ', ['type' => 'qx', 'text' => 'A']);

// Texts. A surrogate in UTF-8 is none.
foreach (["a\xED\xA0\x80", "\xED\xB8\x80", "\xC3", "\xFF"] as $broken) {
    expect('bad_value of text: The field "text" must be a string in UTF-8.', ['type' => 'qr', 'text' => $broken]);
    expect("bad_value of $broken: ", ['type' => 'qr', 'text' => 'A', $broken => 1]);
    expect('bad_request of : ', fn () => Label::makeFromJson("{\"type\":\"qr\",\"text\":\"$broken\"}"));
}
foreach (["A\0B\"\\\n\x1F/", "\u{1F600}\u{6F22}", '<&>\'{$x}'] as $text) {
    check(Label::make(['type' => 'qr', 'text' => $text])->report['text'] === $text, "the text $text");
}
expect(
    'bad_text of text: Code 39 takes letters, digits, the space and - . $ / + %; replace the character U+0000 at position 2.',
    ['type' => 'code39', 'text' => "A\0B"],
);
expect('too_long of text: ', ['type' => 'qr', 'text' => str_repeat('A', 100_000_000)]);

// Documents.
foreach (['', '[]', '{', 'null', '{"type":"qr",}', str_repeat('[', 1_000_000)] as $document) {
    expect('bad_request of : ', fn () => Label::makeFromJson($document));
}
check(count(Label::types()) === 19, 'types');
check(str_starts_with(Label::version(), '1.'), 'version');

// What a label holds is its own, and stays.
$label = Label::make(['type' => 'qr', 'text' => 'hello']);
$usual = $label->data . '';
for ($i = 0; $i < 1000; ++$i) {
    Label::make(['type' => 'qr', 'text' => "other $i"]);
}
check($label->data === $usual && $label->mediaType === 'image/png', 'a label changed');
foreach (['data' => 'x', 'report' => []] as $property => $value) {
    try {
        $label->$property = $value;
        check(false, "$property was changed");
    } catch (Error $error) {
        check(str_contains($error->getMessage(), 'readonly'), $error->getMessage());
    }
}
try {
    $label->save('no such folder/label.png');
    check(false, 'written into no folder');
} catch (RuntimeException $error) {
    check(str_contains($error->getMessage(), 'no such folder/label.png'), $error->getMessage());
}

echo "$checks checks, $failures failed\n";
exit($failures === 0 && $checks > 40 ? 0 : 1);
