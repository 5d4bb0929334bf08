@start "" "%~dp0plexo-devhost.exe" --simulate 1
