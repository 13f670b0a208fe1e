# frozen_string_literal: true

# Makes one label and writes it to a file.
#
#     ruby make_label.rb TYPE TEXT FILE        jan13 490123456789 label.svg
#
# FILE ends in .png, .svg or .pdf. Exit status: 0 written, 1 refused or not written, 2 wrong usage.

require_relative 'label'

abort_with = lambda do |status, message|
  warn message
  exit status
end

abort_with.call(2, 'Usage: make_label.rb TYPE TEXT FILE') unless ARGV.size == 3
type, text, path = ARGV
suffix = File.extname(path).delete_prefix('.')
begin
  label = Label.make(type: type, text: text, format: suffix.empty? ? 'png' : suffix)
  label.report['warnings'].each { |warning| warn "make_label.rb: warning #{warning['code']}: #{warning['message']}" }
  label.save(path)
rescue LabelError => e
  abort_with.call(1, "make_label.rb: #{e.code} #{e.field}: #{e.message}")
rescue SystemCallError => e
  abort_with.call(1, "make_label.rb: cannot write #{path}: #{e.message}")
end
