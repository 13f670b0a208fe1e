<?php
// Makes one label and writes it to a file.
//
//     php -d ffi.enable=1 make_label.php TYPE TEXT FILE        jan13 490123456789 label.svg
//
// FILE ends in .png, .svg or .pdf. Exit status: 0 written, 1 refused or not written, 2 wrong usage.

declare(strict_types=1);

require __DIR__ . '/Label.php';

if ($argc !== 4) {
    fwrite(STDERR, "Usage: make_label.php TYPE TEXT FILE\n");
    exit(2);
}
[, $type, $text, $path] = $argv;
$suffix = pathinfo($path, PATHINFO_EXTENSION);
try {
    $label = Label::make(['type' => $type, 'text' => $text, 'format' => $suffix === '' ? 'png' : $suffix]);
    foreach ($label->report['warnings'] as $warning) {
        fwrite(STDERR, "make_label.php: warning {$warning['code']}: {$warning['message']}\n");
    }
    $label->save($path);
} catch (LabelError $error) {
    fwrite(STDERR, "make_label.php: {$error->getCode()} {$error->field}: {$error->getMessage()}\n");
    exit(1);
} catch (RuntimeException $error) {
    fwrite(STDERR, "make_label.php: {$error->getMessage()}\n");
    exit(1);
}
